#include "inspect/Rules.h"

#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>

namespace veltaris::inspect {

namespace {

using enum RuleId;
using enum Severity;

constexpr bool opens = false, doesNotOpen = true;

constexpr std::array rules{
    // Header text.
    Rule{NoEndMark, "OXD101", Error, opens, "No end of the header",
         "The file has no `#!`, or nothing before it. It opens as an empty data set: nothing of what it holds is read.",
         "An empty file, or one of another kind.", "Make sure that this is an .oxd file and was copied as a whole."},
    Rule{HeaderTooLong, "OXD102", Error, doesNotOpen, "Header too long",
         "The first `#!` comes behind more than 1 GiB of text. A header is never that long.",
         "The `#!` of the header was overwritten, and the next one stands far behind in the samples.",
         "Restore the end of the header, a line with `#!` right before the samples, from a copy."},
    Rule{WideEncoding, "OXD103", Error, doesNotOpen, "Header in UTF-16 or UTF-32",
         "The file begins with the byte-order mark of an encoding that headers are never in.",
         "The bytes FF FE at the beginning of the file.",
         "An editor has changed the file: use the original. Saving it as UTF-8 would not bring the samples back."},
    Rule{NotUtf8, "OXD104", Warning, opens, "Header is not UTF-8",
         "Some bytes are not UTF-8, so the whole header is taken for the system's code page on Windows, and for code "
         "page 1252 elsewhere. Other characters of the header may turn into wrong ones. A save writes UTF-8.",
         "`Dim2Unit=\\xB5V` in an old file, or a byte that was damaged.",
         "Look at the names and units. If they are right, no action is needed."},
    Rule{LineOutsideSection, "OXD105", Warning, opens, "Line outside any section",
         "A line appears before the first `[section]` and is ignored.", "`Version=2` as the first line of a file.",
         "Check whether the head of the section, such as `[DataSet]`, is damaged."},
    Rule{NeitherSectionNorKey, "OXD106", Warning, opens, "Line ignored",
         "A line is neither `[section]` nor `key=value`, and is ignored.", "`Points 256`, or `DataSet-0:1]`.",
         "Check whether the line is damaged, above all when it was the head of a section: its keys then belong to "
         "the section before."},
    Rule{SectionWithoutName, "OXD107", Error, doesNotOpen, "Section without a name",
         "A section is named `[]`. The library opens no such file.", "`[]`",
         "Restore the name, which a link in another section has, or take the two brackets away."},
    Rule{SectionRepeated, "OXD108", Warning, opens, "Section given twice",
         "A second section of the same name, whatever the case of its letters, continues the first one.",
         "`[DataSet-0:0]` twice.", "Check whether one of them had another name. A save writes one section."},
    Rule{KeyRepeated, "OXD109", Warning, opens, "Key given twice",
         "The same key appears earlier in its section. Only the last one counts.",
         "`Lines=128` and, further on, `Lines=256`.",
         "Check which of both is right, and whether the key had another name."},
    Rule{KeyWithoutValue, "OXD110", Note, opens, "Key without a value", "A key without a value counts as missing.",
         "`CurLine=`", "No action is needed unless the value was lost."},
    Rule{LastLineDropped, "OXD111", Warning, opens, "Last line dropped",
         "The text between the last line end and `#!` is ignored.", "`SaveOrder=Intel#!` on one line.",
         "Check whether the line end was lost, or whether the header is cut off here."},
    Rule{ByteOrderMark, "OXD112", Note, opens, "Byte-order mark",
         "The header begins with the byte-order mark of UTF-8, which is skipped. A save does not write it.",
         "The bytes EF BB BF at the beginning of the file.", "No action is needed."},
    Rule{AxisKeyRepeated, "OXD113", Error, opens, "Key of an axis given twice",
         "The same key of an axis appears earlier in its section. Only the last one counts; where one of them had "
         "another name, positions or values are wrong.",
         "`Dim1Range=5e-06` and, further on, `Dim1Range=1e-07`, which was `Dim2Range`.",
         "Restore the name of the one that is wrong; the keys of an axis follow each other in written files."},
    Rule{
        DamagedUtf8, "OXD114", Error, opens, "Damaged byte in a header in UTF-8",
        "Most characters beyond ASCII are UTF-8, and some bytes are not. So the whole header is taken for a code page, "
        "which turns all of these characters, above all those of units, into wrong ones. A save keeps the wrong ones.",
        "The byte FF in a header with `Dim2Unit=\xC2\xB0`.",
        "Restore the byte at the place of the finding; the rest of the header is then read as it was."},
    // Values.
    Rule{UnknownVersion, "OXD201", Error, doesNotOpen, "Unknown version",
         "A section has a version that the library does not know: a data set has 1 or 2, a channel at most 3, views "
         "at most 1.",
         "`Version=7`", "Check whether the number is damaged. If it is not, a newer program wrote the file."},
    Rule{BadContent, "OXD202", Error, doesNotOpen, "Impossible size or count",
         "A size is negative, a count is beyond what the rest of the header can back up, or a key that must be there "
         "is missing.",
         "`Points=-1`, or `GroupCount=99999999`.",
         "Restore the number; the samples and the other channels of the group often tell it."},
    Rule{UnreadableView, "OXD203", Error, doesNotOpen, "Unreadable view or processor",
         "A view has a code that there is not, a range without a comma or a parameter whose operator is no number; "
         "or a processor has an unknown identifier. The library does not open such a file, although views and "
         "processors do not concern the samples.",
         "`ViewTyp=9`", "Restore the value, or remove the key: the library then uses its default."},
    Rule{NoNumber, "OXD204", Warning, opens, "Not a number",
         "A value should be a number, or one of a few words, and is not. The default of its key is used instead.",
         "`CurLine=l2`", "Restore the value if it matters."},
    Rule{SizeNoNumber, "OXD205", Error, opens, "Size that is not a number",
         "A number that says how many samples a channel has, or which channels there are, cannot be read. Its "
         "default is used instead, and the samples of this channel and of all that follow may not be their own.",
         "`Points=2S6`", "Restore the number; the other channels of the group usually have the same."},
    Rule{OutOfRange, "OXD206", Warning, opens, "Number out of range",
         "A number is too large for its key. The default of the key is used instead.", "`CurLine=9999999999`",
         "Restore the value if it matters."},
    Rule{NegativeCount, "OXD207", Warning, opens, "Negative count", "A count is negative and counts as 0.",
         "`ViewCount=-2`", "Restore the count."},
    Rule{NumberCut, "OXD208", Warning, opens, "Number used in part",
         "Something behind a number is ignored, a number too small to be told from 0 counts as 0, or a negative one "
         "wraps around.",
         "`ZRange=3mV,5`, or `Dim0Min=1e-400`.", "Restore the value if it matters."},
    Rule{AxisNoNumber, "OXD209", Error, opens, "Axis that is not a number",
         "The start or the range of an axis cannot be read. Its default is used instead, so that positions or values "
         "are wrong.",
         "`Dim2Range=1,5e-7`", "Write the number with a decimal point, or restore it."},
    Rule{OtherStorage, "OXD210", Error, opens, "Samples stored otherwise",
         "The header says that samples are stored in another way than the library reads them, which is signed, "
         "binary and with the lowest byte first. They are read like this all the same.",
         "`SaveOrder=Motorola`", "If the key is right, no value of this channel is; if it is damaged, restore it."},
    Rule{AxisKeyMissing, "OXD211", Error, opens, "Key of an axis missing",
         "The start or the range of an axis is missing or has no value, or a unit has none. Written files have both "
         "numbers for every axis, and no key for an empty unit. The default is used instead, so that positions or "
         "values are wrong.",
         "A channel of version 2 or 3 without `Dim2Min`.",
         "Restore the key; a similar name among the unknown keys of the section may be what is left of it."},
    Rule{AxisKeyDamaged, "OXD212", Error, opens, "Key of an axis damaged",
         "A unit, or a number in version 1, is missing where a line looks like what is left of its key; or the line "
         "behind a number or a unit is ignored and may be the rest of it.",
         "`Dim2Unyt=V`, or `Dim2Min=-0` and, in the next line, `5`.", "Restore the line, or join the two."},
    Rule{ChannelVersionDoubtful, "OXD213", Error, opens, "Channel of an older version than its data set",
         "The section of a channel has version 1, or none, in a data set of version 2, and a unit begins with an SI "
         "prefix. In version 1 the prefix scales the numbers of the axis and is taken off the unit; files of version "
         "2 are written with channels of version 2 or 3.",
         "`Version=1` and `Dim2Unit=Pa`: numbers are multiplied by 10^15, and the unit becomes `a`.",
         "Restore the version. If it is right, no action is needed."},
    // Counts and links.
    Rule{CountTooLarge, "OXD301", Warning, opens, "Count larger than its list",
         "A count promises more entries than there are keys for. The missing ones count as empty.",
         "`GroupCount=3` with keys for two groups, or `Gr0-Count=93` with three channels.",
         "Restore the count or the missing keys."},
    Rule{KeyBeyondCount, "OXD302", Warning, opens, "Key beyond its count",
         "The number of a key is not below the count of its list, so that the key is ignored, or taken for an item "
         "of information.",
         "`Gr2-Name=Back` with `GroupCount=2`.", "Check the count: everything behind it is not read."},
    Rule{ChannelSectionMissing, "OXD303", Error, opens, "Section of a channel missing",
         "A channel slot names a section that there is not. The channel counts as one without samples; if it had "
         "any, all channels behind it get samples of others.",
         "`Gr0-Ch1=DataSet-0:1` without `[DataSet-0:1]`.",
         "Look for the section among those that nothing names, and restore the name."},
    Rule{ChannelSectionShared, "OXD304", Error, opens, "Section of several channels",
         "Several channel slots name one section. Each gets samples of its own; a damaged name looks like this, too.",
         "`Gr0-Ch0=DataSet-0:0` and `Gr0-Ch1=DataSet-0:0`.",
         "Check whether a section is left over that one of them should name."},
    Rule{InfoLinkDangling, "OXD305", Warning, opens, "Link of information without a section",
         "A group of information is named whose section is not there, or was read already. The group is empty.",
         "`InfoSet0=Instrument` without `[DataSet\\Instrument]`.",
         "Look for the section among those that nothing names, and restore the name."},
    Rule{EntrySkipped, "OXD306", Warning, opens, "View or processor without a section",
         "A list names a section that there is not, or one that lacks what makes it a processor. The defaults are "
         "used, or the entry is skipped.",
         "`View0=V` without `[V]`.", "None is needed for the samples."},
    Rule{ChannelNotListed, "OXD307", Warning, opens, "Channel that nothing names",
         "A section looks like that of a channel, and no slot names it. The channel is not read; if the file has its "
         "samples, other channels get them.",
         "`[DataSet-0:1]` after `Gr0-Ch1` was damaged.", "Restore the key that names it, or the count in front."},
    Rule{ChannelMisplaced, "OXD308", Error, opens, "Channel in the slot of another",
         "A slot names the section that belongs to another slot, so that the order of channels, and with it that of "
         "their samples, may be wrong.",
         "`Gr1-Ch1=DataSet-0:1`", "Restore the key: slot and section have the same two numbers in written files."},
    Rule{InfoNotLinked, "OXD309", Warning, opens, "Information that nothing links",
         "A section of information is not reached from the data set, is not read, and is lost when the file is saved.",
         "`[DataSet\\Instrument]` without an `InfoSet` key that names it.",
         "Restore the link or the count in front of it."},
    Rule{DataSetMissing, "OXD310", Error, doesNotOpen, "No data-set section",
         "The header has no section `[DataSet]`, without which the library does not open a file.",
         "`[DbtaSet]` as the first section, or a file of another kind that has `#!` somewhere.",
         "Restore the head of the first section. A header without any section is none of an .oxd file."},
    // Samples.
    Rule{UnusableBits, "OXD401", Error, doesNotOpen, "Impossible bits of a sample",
         "A sample has 8, 16 or 32 bits, and no other number.", "`SaveBits=12`",
         "Restore the number; the bytes in the file usually leave one that fits."},
    Rule{SamplesMissing, "OXD402", Error, doesNotOpen, "Samples missing",
         "The file ends before the samples of this channel do. It was cut off, or a size is damaged.",
         "A copy that was interrupted.", "Copy the file again. `oxd salvage` saves the lines that are there."},
    Rule{TooManySamples, "OXD403", Error, doesNotOpen, "Too many samples", "A channel has more than 2^32 samples.",
         "`Points=2000000` and `Lines=2000000`.", "Restore the numbers."},
    Rule{BytesLeftOverUnexplained, "OXD404", Error, opens, "Bytes left over, sizes in doubt",
         "Bytes follow the last sample, and a size or link in the header is damaged or in doubt: channels may have "
         "samples of others, or lines of a wrong length.",
         "`Points=2S6`, after which the channel has no samples.",
         "Correct the size that the other findings name, so that no bytes are left over."},
    Rule{BytesLeftOver, "OXD405", Warning, opens, "Bytes left over",
         "Bytes follow the last sample, which the library ignores. Nothing in the header tells where they come from.",
         "Something that another program appended.",
         "No action is needed if the program that wrote the file does so. A save drops them."},
    Rule{SizeDoubtful, "OXD406", Error, opens, "Size in doubt",
         "A size of this channel is missing, given twice, contradicted by other keys, or off by one digit from one "
         "that fits the bytes of the file exactly, while as it stands the bytes do not fit.",
         "`Points=156`, and `Points=256` would leave no byte over.",
         "Restore the size. The lines of other channels of the group usually have as many points."},
    Rule{LineTooLong, "OXD407", Error, opens, "Line with too many points",
         "A line claims more valid points than the channel has, and cannot be read.",
         "`LineDim3Points=300` with `Points=256`.", "Restore the number; the samples of the line are in the file."},
    Rule{CurrentLineOutside, "OXD408", Note, opens, "Current line outside the channel",
         "The line that was written last is not one of the channel. The number is kept.",
         "`CurLine=256` with `Lines=256`.", "No action is needed."},
    Rule{LinePointsMissing, "OXD409", Error, opens, "Points of a line missing",
         "Lines of a channel of version 3 have axes of their own, and one of them lacks its number of valid points. "
         "It counts as acquired to its end; points that never were are read as values.",
         "`LineDim0Points=16` and no `LineDim1Points`, with `Lines=2`.",
         "Restore the key; a similar name among the unknown keys of the section may be what is left of it."},
    Rule{LineKeysIgnored, "OXD410", Error, opens, "Axes of lines ignored",
         "The section of a channel has keys for axes of lines, which only version 3 has. They are ignored: points "
         "that were never acquired are read as values, and a save drops the axes.",
         "`LineDim0Points=10` with `Version=2`.", "Restore the version, which is 3 in written files with such keys."},
    // Axes.
    Rule{AxisNotFinite, "OXD501", Warning, opens, "Axis that is not finite",
         "The start, the range or the end of an axis is infinite or not a number. It gives no positions or values.",
         "`Dim2Range=inf`", "Restore the number."},
    Rule{SignalRangeZero, "OXD502", Warning, opens, "Signal axis of range 0",
         "All samples have the same value, because the signal axis has no extent.", "A channel without `Dim2Range`.",
         "Restore the range; raw samples are there."},
    Rule{AxisRangeZero, "OXD503", Note, opens, "Axis of range 0",
         "All points or lines are at one place, because their axis has no extent.", "A channel without `Dim0Range`.",
         "No action is needed unless the range was lost."},
    Rule{AxisReversed, "OXD504", Note, opens, "Reversed axis", "An axis has a negative range: it runs downwards.",
         "`Dim0Range=-5e-06`", "No action is needed."},
    // What a save changes.
    Rule{ViewsDropped, "OXD601", Note, opens, "Views are dropped by a save of the library",
         "How the acquiring application showed the channels is read, and never written.", "`[SetView]`",
         "Edit the file with `oxd`, which carries views over, or keep the original file."},
    Rule{ProcessorsDropped, "OXD602", Note, opens, "Processors are dropped by a save of the library",
         "The processors of the acquiring application are read, and never written.", "`[ProcessorSet]`",
         "Edit the file with `oxd`, which carries processors over, or keep the original file."},
    Rule{SectionDropped, "OXD603", Warning, opens, "Unknown section is dropped by a save",
         "The library does not know what the section is for, and does not write it.", "`[Calibration]`",
         "Edit the file with `oxd`, which carries most such sections over, or keep the original file."},
    Rule{KeyDropped, "OXD604", Warning, opens, "Unknown key is dropped by a save",
         "The library does not know the key in a data set of this version, and does not write it.",
         "`Operator=Jane` in a channel's section.", "Keep the original file if the key matters."},
    Rule{NameCollides, "OXD605", Warning, opens, "Name is changed by a save",
         "Once saved, two names would be the same key or section, because they differ in case only or because files "
         "use one themselves. The later one gets a number.",
         "Items `Gain` and `gain` after an old name was replaced.", "Give one of them another name."},
    Rule{TextChanged, "OXD606", Warning, opens, "Text is changed by a save",
         "A text has characters that a header cannot hold: they become blanks.", "A name with a zero byte in it.",
         "Restore the text, which was probably damaged."},
    Rule{NumberRounded, "OXD607", Warning, opens, "Number is rounded by a save",
         "A number has more than the 6 significant digits that are written.", "`Dim2Range=1.23456789e-07`",
         "Keep the original file if the digits matter."},
    Rule{BitsWidened, "OXD608", Note, opens, "8 bits become 16 by a save",
         "A channel with samples of 8 bits is written with 16. Its values stay.", "`SaveBits=8`",
         "No action is needed."},
    Rule{VersionRaised, "OXD609", Note, opens, "Version 1 becomes 2 by a save",
         "A data set of version 1 is written as one of version 2, and units without SI prefixes.", "`Version=1`",
         "Keep the original file for programs that read version 1 only."},
    Rule{ListBecomesTrees, "OXD610", Note, opens, "Flat information becomes trees by a save",
         "The flat list could not hold its groups unchanged, so that they are written as trees.",
         "`offsetx` and `X-Pos`, of which the one is the old name of the other.", "No action is needed."},
};

static_assert(std::ranges::is_sorted(rules, {}, &Rule::number));

} // namespace

std::string_view NameOf(Severity severity)
{
    constexpr std::array<std::string_view, 3> names{"note", "warning", "error"};
    return names.at(static_cast<std::size_t>(severity));
}

std::span<const Rule> AllRules()
{
    return rules;
}

const Rule* FindRule(std::string_view id)
{
    const auto* const found =
        std::ranges::find_if(rules, [&](const Rule& rule) { return velstdlib::string::EqualFolded(rule.id, id); });
    return found == rules.end() ? nullptr : found;
}

const Rule& GetRule(RuleId number)
{
    return *std::ranges::lower_bound(rules, number, {}, &Rule::number);
}

} // namespace veltaris::inspect
