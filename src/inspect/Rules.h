// The rules by which a file is inspected: one table, from which findings, explanations and documents are made.
#pragma once

#include <span>
#include <string_view>

namespace veltaris::inspect {

// Error: the library does not open the file, or what it reads may not be what was measured. Warning: a value is not
// used as written, or a save loses it. Note: harmless.
enum class Severity
{
    Note,
    Warning,
    Error
};

std::string_view NameOf(Severity severity); // "note", "warning" or "error"

// The number of a rule in its id. Numbers are stable for good: one that is given up is not used again.
enum class RuleId
{
    // The header as a text.
    NoEndMark = 101,
    HeaderTooLong,
    WideEncoding,
    NotUtf8,
    LineOutsideSection,
    NeitherSectionNorKey,
    SectionWithoutName,
    SectionRepeated,
    KeyRepeated,
    KeyWithoutValue,
    LastLineDropped,
    ByteOrderMark,
    AxisKeyRepeated,
    DamagedUtf8,
    // Values.
    UnknownVersion = 201,
    BadContent,
    UnreadableView,
    NoNumber,
    SizeNoNumber,
    OutOfRange,
    NegativeCount,
    NumberCut,
    AxisNoNumber,
    OtherStorage,
    AxisKeyMissing,
    AxisKeyDamaged,
    ChannelVersionDoubtful,
    // Counts and links.
    CountTooLarge = 301,
    KeyBeyondCount,
    ChannelSectionMissing,
    ChannelSectionShared,
    InfoLinkDangling,
    EntrySkipped,
    ChannelNotListed,
    ChannelMisplaced,
    InfoNotLinked,
    DataSetMissing,
    // Samples.
    UnusableBits = 401,
    SamplesMissing,
    TooManySamples,
    BytesLeftOverUnexplained,
    BytesLeftOver,
    SizeDoubtful,
    LineTooLong,
    CurrentLineOutside,
    LinePointsMissing,
    LineKeysIgnored,
    // Axes.
    AxisNotFinite = 501,
    SignalRangeZero,
    AxisRangeZero,
    AxisReversed,
    // What a save changes.
    ViewsDropped = 601,
    ProcessorsDropped,
    SectionDropped,
    KeyDropped,
    NameCollides,
    TextChanged,
    NumberRounded,
    BitsWidened,
    VersionRaised,
    ListBecomesTrees,
};

// All texts live as long as the program. `stopsOpening` holds for a rule exactly when the library does not open a file
// that breaks it.
struct Rule
{
    RuleId number;
    std::string_view id; // "OXD" and the number
    Severity severity;
    bool stopsOpening;
    std::string_view title;   // a few words
    std::string_view cause;   // what is wrong and what comes of it
    std::string_view example; // lines of a header, or a sentence
    std::string_view remedy;
};

// Sorted by id. This and the functions below may be used by several threads at once.
std::span<const Rule> AllRules();

// The rule with this id, whatever the case of its letters, or null.
const Rule* FindRule(std::string_view id);

const Rule& GetRule(RuleId number);

} // namespace veltaris::inspect
