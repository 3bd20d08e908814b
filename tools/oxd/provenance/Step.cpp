#include "oxd/provenance/Step.h"

#include "oxd/library/KeptText.h"
#include "oxd/provenance/Origin.h"
#include "oxd/provenance/SampleDigest.h"
#include "oxd/provenance/Timestamp.h"
#include "oxd/system/Failure.h"

#include <algorithm>
#include <charconv>

namespace oxd {

namespace {

// Names of a step's texts in files, which stay what they are for good.
constexpr const char* groupId = "Group id";
constexpr const char* channelIndex = "Channel index";
constexpr const char* operatorName = "Operator";
constexpr const char* samplesBefore = "SHA-256 of samples before";

bool IsNumber(const std::string& text)
{
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    return parsed.ec == std::errc() && parsed.ptr == end;
}

bool IsDigest(const std::string& text)
{
    constexpr std::size_t digits = 64;
    return text.size() == digits && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

bool IsOperator(const std::string& text)
{
    return FindLineOperator(text) != nullptr;
}

void Add(Step& step, const char* name, const std::string& value)
{
    if (IsKeptValue(value)) {
        step.items.emplace_back(name, value);
    }
}

std::string TextOf(const Step& step, const char* name, bool (*isSound)(const std::string&), const std::string& subject)
{
    const auto found =
        std::find_if(step.items.begin(), step.items.end(), [&](const auto& item) { return item.first == name; });
    if (found == step.items.end() || !isSound(found->second)) {
        throw Failure(ExitCode::Damaged, subject,
                      std::string("its provenance has no ") + name + " that could be repeated");
    }
    return found->second;
}

} // namespace

Step DescribeOrigin(const std::string& source)
{
    Step step;
    Add(step, "Time", Timestamp());
    Add(step, "Tool", ToolName());
    Add(step, "Library", LibraryName());
    Add(step, "Source", NameWithoutFolder(source));
    return step;
}

Step DescribeStep(const std::string& source, const Channel& channel, const LineOperator& lineOperator)
{
    Step step = DescribeOrigin(source);
    Add(step, "Group", channel.GroupName());
    Add(step, groupId, std::to_string(channel.Group()));
    Add(step, "Channel", channel.Name());
    Add(step, channelIndex, std::to_string(channel.Index()));
    Add(step, operatorName, std::string(lineOperator.name));
    Add(step, samplesBefore, DigestOfSamples(channel));
    return step;
}

StepWork WorkOf(const Step& step, const std::string& subject)
{
    return {"id:" + TextOf(step, groupId, IsNumber, subject), TextOf(step, channelIndex, IsNumber, subject),
            *FindLineOperator(TextOf(step, operatorName, IsOperator, subject)),
            TextOf(step, samplesBefore, IsDigest, subject)};
}

} // namespace oxd
