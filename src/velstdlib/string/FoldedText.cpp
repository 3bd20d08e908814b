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

template <class T>
T FirstBytes(std::string_view text)
{
    T first = 0;
    std::memcpy(&first, text.data(), sizeof first);
    return first;
}

// Up to eight characters in one number, without a loop: texts of equal length give equal numbers only when they are
// equal.
Block ShortBlock(std::string_view text)
{
    if (text.size() >= sizeof(std::uint32_t)) {
        const Block last = FirstBytes<std::uint32_t>(text.substr(text.size() - sizeof(std::uint32_t)));
        return last << 32 | FirstBytes<std::uint32_t>(text);
    }
    if (text.empty())
        return 0;
    const auto at = [&](std::size_t position) { return Block{static_cast<unsigned char>(text[position])}; };
    return at(0) | at(text.size() / 2) << 8 | at(text.size() - 1) << 16;
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
    return a.size() == b.size() && (a == b || std::ranges::equal(a, b, {}, Folded, Folded));
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
    const auto mix = [&](Block block) { state = Mixed(FoldedBlock(block) ^ keys.block, state ^ keys.state); };
    for (; text.size() > sizeof(Block); text.remove_prefix(sizeof(Block)))
        mix(FirstBytes<Block>(text));
    mix(ShortBlock(text));
    return static_cast<std::size_t>(Mixed(state, keys.block));
}

} // namespace veltaris::velstdlib::string
