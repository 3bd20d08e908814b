#include "velstdlib/string/Texts.h"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <array>

namespace veltaris::velstdlib::string {

namespace {

struct Row
{
    TextId id;
    std::string_view text;
};

constexpr std::array<Row, 10> texts{
    {{TextId::FileNotFound, "The specified file was not found. Filename: %s"},
     {TextId::FileCannotBeOpened, "The specified file cannot be opened. Filename: %s"},
     {TextId::FileWriteProtected, "The specified file is write protected. Filename: %s"},
     {TextId::FileVersionUnknown, "The hed file has an unknown version. Please contact the Veltaris support to get a "
                                  "correct hed file. Version: %s"},
     {TextId::FileCorrupted,
      "The hed file is corrupted. Please contact the Veltaris support to get a correct hed file. "
      "Filename: %s"},
     {TextId::FileCannotBeSaved, "%s Filename: %s"},
     {TextId::TooMuchTextForFile, "There is too much text for one file."},
     {TextId::TooManySlotsForFile, "There are too many channel slots for one file."},
     {TextId::TooManyPointlessLines, "There are too many lines without samples for one file."},
     {TextId::TextChangedForHeader, "A text was changed to fit into a header: %s"}}};

} // namespace

std::string_view GetText(TextId id)
{
    const auto* const found = std::ranges::find(texts, id, &Row::id);
    if (found == texts.end())
        BOOST_THROW_EXCEPTION(
            CGetTextIdUndefinedException("No text with given id. Id: " + std::to_string(static_cast<unsigned>(id))));
    return found->text;
}

std::string FormatText(TextId id, std::initializer_list<std::string_view> arguments)
{
    constexpr std::string_view place = "%s";
    std::string text;
    std::string_view rest = GetText(id);
    for (const std::string_view argument : arguments) {
        const auto found = rest.find(place);
        text.append(rest.substr(0, found)).append(argument);
        rest.remove_prefix(found + place.size());
    }
    return text.append(rest);
}

} // namespace veltaris::velstdlib::string
