// The keys that each kind of section has, and what stands behind them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace veltaris::inspect {

inline constexpr int lineAxesVersion = 3; // of a channel's section: lines may have axes of their own

// What a section is for. A section may have several uses, so that the values are bits.
enum class SectionUse : std::uint16_t
{
    DataSet = 1,
    Channel = 2,
    FlatInfo = 4,
    InfoGroup = 8,
    ViewList = 16,
    View = 32,
    ProcessorList = 64,
    ProcessorEntry = 128,
    Processor = 256
};

enum class ValueKind
{
    Text,
    Version, // an int; without one the section is another
    Size,    // an int that says how many samples there are
    Int,
    Count,    // an int, 0 when it is negative
    Channels, // the same of groups, slots, channels or frames, which are channels in the end
    Unsigned,
    UnsignedCount,
    AxisNumber, // a double, with the prefix of its unit in a channel of version 1
    IntPair,    // two ints and a comma, each with anything behind it
    Parameter,  // a number with a unit
    Flag,
    Link,   // a section
    Storage // one word that is written and not read
};

struct KeySpec
{
    SectionUse use;
    int version;              // of a data set; 0: any
    std::string_view pattern; // "#" stands for an index
    ValueKind kind;
    std::string_view taken; // what a missing or unreadable one counts as; of Storage, the one word
    // The count that an index must be below, and whether each index below it has a key of this kind.
    std::string_view countKey = {};
    bool isListed = false;
};

// The first two indices in a key.
struct KeyIndices
{
    std::uint64_t first = 0, second = 0;
};

// A key of a section, and what is known of it.
struct KnownKey
{
    const KeySpec* spec = nullptr;
    KeyIndices indices;
};

// The rows are those of one static table. May be called by several threads at once.
std::optional<KnownKey> FindKeySpec(SectionUse use, int version, std::string_view key);
std::span<const KeySpec> AllKeySpecs();

// Whether the key belongs to an axis of a channel or of one of its lines.
bool IsOfAxis(const KeySpec& spec);

// Whether the key has the form of the pattern, whatever the case of its letters, and the indices in it.
std::optional<KeyIndices> MatchKey(std::string_view key, std::string_view pattern);

} // namespace veltaris::inspect
