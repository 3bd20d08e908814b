// The processors that a command is to run: those of the file, or one that the command line describes.
#pragma once

#include "oxd/inspection/InspectFile.h"
#include "velflexlib/dataset/processors/ProcessorSet.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace oxd {

// What a command line calls a kind of processors.
struct KindName
{
    std::string_view name;
    const veltaris::velflexlib::dataset::CProcessorKind* kind;
    std::string_view description;
};
extern const std::array<KindName, 3> kindNames;

// What the value of an option is.
enum class SettingForm
{
    Text,
    Number,
    AboveZero, // a number; in a file, a 0 stands for none
    Range,     // FROM:TO
    Choice,    // a name, of which a file has the position in the list
};

// An option of the command line that gives the processor of --kind a parameter.
struct SettingOption
{
    const char* option;
    const char* key; // of a range, what its two keys begin with
    const char* shape;
    const char* description;
    SettingForm form;
    std::span<const std::string_view> choices = {};
};
extern const std::array<SettingOption, 11> settingOptions;

// The option that gives this key, or both keys that begin with it.
std::string OptionOf(const std::string& key);

// A plain value. All texts are as a header has them.
struct ProcessorRequest
{
    std::string kind;                                                 // of a KindName; empty: those of the file
    std::vector<std::pair<std::uint64_t, std::uint64_t>> inputs = {}; // groups and channels by their positions
    std::vector<std::pair<std::string, std::string>> settings = {};   // keys of the processor's section, with values

    bool IsOfFile() const { return kind.empty(); }
};

// The keys that are no parameters of a kind alone.
inline constexpr const char* displayNameKey = "DisplayName";

// Throws a Failure, which is wrong usage, if the kind has no such parameter or the value cannot be one.
void AddSetting(ProcessorRequest& request, const std::string& key, const std::string& value);

// The same for the value that a command line gives to an option.
void AddOption(ProcessorRequest& request, const SettingOption& option, const std::string& value);

// Finds an input that a command line names as GROUP/CHANNEL, the last slash of which counts. Throws a Failure if the
// file has none.
void AddInput(ProcessorRequest& request, const inspect::Inspection& inspection, const std::string& input);

// The set with the one processor that is described. The request must not be of the file.
std::unique_ptr<veltaris::velflexlib::dataset::CProcessorSet> MakeProcessors(const ProcessorRequest& request);

} // namespace oxd
