#include "oxd/export/ExportAll.h"

#include "oxd/files/FilePath.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Text.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

namespace oxd {

namespace {

constexpr std::string_view usualFormat = "png";

void MakeFolder(const std::string& folder)
{
    std::error_code error;
    std::filesystem::create_directory(ToPath(folder), error);
    if (error || !std::filesystem::is_directory(ToPath(folder), error)) {
        throw Failure(ExitCode::CannotWrite, folder, error ? error.message() : "is a file, not a folder");
    }
}

// Without what a system may refuse in a name. A dot or a blank at its end cannot occur, since more follows.
std::string InFileName(const std::string& name)
{
    constexpr std::string_view refused = "<>:\"/\\|?*";
    constexpr std::size_t most = 60; // characters; a name may have 255 bytes
    std::string text = ValidUtf8(Printable(Shortened(name, most)));
    std::ranges::replace_if(
        text, [=](char c) { return refused.find(c) != std::string_view::npos; }, '_');
    return text.empty() ? "_" : text;
}

// Some systems take names for the same that differ in case.
std::string Folded(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

// Names that are all different.
class FileNames
{
public:
    explicit FileNames(std::string suffix) : m_suffix(std::move(suffix)) {}

    std::string Next(const Channel& channel)
    {
        const std::string name = InFileName(channel.GroupName()) + "-" + InFileName(channel.Name());
        std::string unique = name;
        for (int number = 2; !m_used.insert(Folded(unique)).second; ++number) {
            unique = name + "-" + std::to_string(number);
        }
        return unique + m_suffix;
    }

private:
    std::string m_suffix;
    std::set<std::string> m_used;
};

} // namespace

void ExportAll(const Export& wanted, const ChannelReport& done, const FailureReport& failed)
{
    const DataSet dataSet = DataSet::Open(wanted.selection.file);
    const std::vector<std::uint64_t> groups = GroupIds(dataSet);
    const std::vector<ChannelPlace> places = PlacesOf(dataSet, wanted.selection);
    MakeFolder(wanted.output.name);
    Export one = wanted;
    one.format = wanted.format.empty() ? usualFormat : wanted.format;
    FileNames names("." + one.format);
    for (const ChannelPlace& place : places) {
        const Channel channel(dataSet, groups.at(place.group), place.slot);
        one.selection.group = "id:" + std::to_string(groups.at(place.group));
        one.selection.channel = std::to_string(place.slot);
        one.output.name = ToUtf8(ToPath(wanted.output.name) / ToPath(names.Next(channel)));
        try {
            done(ExportChannel(dataSet, one));
        } catch (const Failure& failure) {
            failed(failure);
        }
    }
}

} // namespace oxd
