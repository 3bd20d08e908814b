#include "oxd/viewer/WritePage.h"

#include "oxd/files/Reopen.h"
#include "oxd/provenance/Origin.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Text.h"
#include "oxd/viewer/Base64.h"
#include "oxd/viewer/ViewerPage.h"

#include <cstdint>

namespace oxd {

namespace {

// The element of the page that is for a file, up to its attributes. No browser runs what is in it.
constexpr std::string_view place = R"(<script type="application/octet-stream" id="file")";

// The longest texts of browsers have 2^29 characters, and base64 makes four characters of three bytes.
constexpr std::uint64_t largestFile = 384'000'000;

// A text that cannot end the attribute that it is the value of.
std::string AttributeValue(const std::string& text)
{
    std::string value;
    for (const char c : ValidUtf8(Printable(text))) {
        switch (c) {
        case '&':
            value += "&amp;";
            break;
        case '"':
            value += "&quot;";
            break;
        default:
            value += c;
        }
    }
    return value;
}

void WriteContent(const std::string& file, OutputFile& output)
{
    std::ifstream input = Reopen(file);
    std::string chunk;
    std::uint64_t size = 0;
    do {
        chunk.resize(base64Group << 18U);
        input.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        chunk.resize(static_cast<std::size_t>(input.gcount()));
        size += chunk.size();
        if (size > largestFile) {
            throw Failure(ExitCode::No, file, "is too large for a page, which holds up to 384 MB");
        }
        output.Write(ToBase64(chunk));
    } while (input);
    if (input.bad()) {
        throw Failure(ExitCode::CannotOpen, file, "cannot be read to its end");
    }
}

} // namespace

void WritePage(const std::string& file, const Destination& destination)
{
    const std::string_view page = ViewerPage();
    const std::size_t attributes = page.find(place);
    if (attributes == std::string_view::npos) {
        throw Failure(ExitCode::Usage, file, "this build of oxd has no viewer to make a page with");
    }
    RequireOtherFile(file, destination.name);
    OutputFile output(destination);
    const std::size_t end = attributes + place.size();
    output.Write(page.substr(0, end));
    output.Write(" data-name=\"" + AttributeValue(NameWithoutFolder(file)) + "\"");
    output.Write(page.substr(end, 1)); // the element begins
    WriteContent(file, output);
    output.Write(page.substr(end + 1));
    output.Close();
}

} // namespace oxd
