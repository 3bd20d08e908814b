#include "Correct.h"

#include "Channel.h"
#include "Failure.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>

namespace oxd {

namespace {

std::filesystem::path ToPath(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

// Also noticed through a link. Files that cannot be examined are reported when they are opened.
bool IsSameFile(const std::string& first, const std::string& second)
{
    std::error_code ignored;
    return std::filesystem::equivalent(ToPath(first), ToPath(second), ignored);
}

std::uint64_t FindGroup(const DataSet& dataSet, const Correction& wanted)
{
    try {
        return dataSet.Call(GetGroupId, wanted.group.c_str());
    } catch (const LibraryError&) {
        throw Failure(ExitCode::No, wanted.file, "no group named \"" + wanted.group + "\"");
    }
}

std::optional<std::uint64_t> ToIndex(const std::string& text)
{
    std::uint64_t index = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, index);
    return parsed.ec == std::errc() && parsed.ptr == end ? std::optional(index) : std::nullopt;
}

bool Matches(const Channel& channel, std::uint64_t slot, const std::string& wanted)
{
    if (!channel.Exists()) {
        return false;
    }
    const auto index = ToIndex(wanted);
    return index ? slot == *index : channel.Name() == wanted;
}

Channel FindChannel(const DataSet& dataSet, const Correction& wanted)
{
    const std::uint64_t group = FindGroup(dataSet, wanted);
    const std::uint64_t slots = dataSet.Call(GetChannelCount, group);
    for (std::uint64_t slot = 0; slot < slots; ++slot) {
        const Channel channel(dataSet, group, slot);
        if (Matches(channel, slot, wanted.channel)) {
            return channel;
        }
    }
    throw Failure(ExitCode::No, wanted.file, "no channel \"" + wanted.channel + "\" in group \"" + wanted.group + "\"");
}

UntouchedLines CorrectLines(Channel channel, std::int32_t lineOperator)
{
    UntouchedLines untouched;
    const std::uint64_t lines = channel.Lines();
    for (std::uint64_t line = 0; line < lines; ++line) {
        try {
            const std::vector<std::int32_t> corrected = channel.ReadRaw(line, lineOperator);
            if (corrected.empty()) {
                untouched.tooShort.Add(line, "too few samples for this operator");
            } else {
                channel.WriteRaw(line, corrected);
            }
        } catch (const LibraryError& error) {
            untouched.damaged.Add(line, error.what());
        }
    }
    return untouched;
}

} // namespace

UntouchedLines Correct(const Correction& correction)
{
    DataSet dataSet = DataSet::Open(correction.file);
    if (IsSameFile(correction.file, correction.output)) {
        throw Failure(ExitCode::Usage, correction.output, "is the file to correct, which stays as it is");
    }
    UntouchedLines untouched = CorrectLines(FindChannel(dataSet, correction), correction.lineOperator.code);
    dataSet.SaveAs(correction.output);
    return untouched;
}

} // namespace oxd
