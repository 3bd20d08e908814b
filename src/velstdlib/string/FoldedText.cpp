#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <random>

namespace veltaris::velstdlib::string {

namespace {

using Block = std::uint64_t;

constexpr Block Repeated(std::uint8_t byte)
{
    return byte * Block{0x0101010101010101};
}

// Folds eight characters at once: a byte is upper case when it is below 0x80 and, with its top bit as carry,
// adding 0x80 - 'A' overflows into that bit while adding 0x80 - 'Z' - 1 does not.
constexpr Block FoldedBlock(Block block)
{
    const Block low = block & Repeated(0x7F);
    const Block fromA = low + Repeated(0x80 - 'A');
    const Block aboveZ = low + Repeated(0x80 - 'Z' - 1);
    const Block upper = fromA & ~aboveZ & ~block & Repeated(0x80);
    return block | upper >> 2;
}

struct HashKeys
{
    Block block;
    Block state;
};

const HashKeys& Keys()
{
    static const HashKeys keys = [] {
        std::random_device source;
        const auto draw = [&] { return (Block{source()} << 32 | source()) | 1; };
        return HashKeys{draw(), draw()};
    }();
    return keys;
}

// The two halves of the 128-bit product of both numbers, folded together: each bit depends on every input bit.
Block Mixed(Block a, Block b)
{
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide{a} * b;
    return static_cast<Block>(product) ^ static_cast<Block>(product >> 64);
}

} // namespace

bool EqualFolded(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, Folded, Folded);
}

std::string FoldedCopy(std::string_view text)
{
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), Folded);
    return folded;
}

std::size_t HashFolded(std::string_view text)
{
    const HashKeys& keys = Keys();
    Block state = keys.state ^ text.size();
    while (!text.empty()) {
        Block block = 0;
        const std::size_t length = std::min(text.size(), sizeof block);
        std::memcpy(&block, text.data(), length);
        state = Mixed(FoldedBlock(block) ^ keys.block, state ^ keys.state);
        text.remove_prefix(length);
    }
    return static_cast<std::size_t>(Mixed(state, keys.block));
}

} // namespace veltaris::velstdlib::string
