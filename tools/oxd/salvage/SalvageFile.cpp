#include "oxd/salvage/SalvageFile.h"

#include "oxd/files/FilePath.h"
#include "oxd/inspection/CarriedSections.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/inspection/InsertIntoHeader.h"
#include "oxd/inspection/ModelFile.h"
#include "oxd/salvage/ValidityMap.h"
#include "oxd/system/Failure.h"

#include <fstream>
#include <system_error>

namespace oxd {

namespace {

salvage::Salvaged Read(const SalvageRequest& request)
{
    try {
        std::ifstream stream(ToPath(request.file), std::ios::binary);
        return salvage::Salvage(stream, request.file, request.trust);
    } catch (const std::system_error& error) {
        throw Failure(ExitCode::Damaged, request.file, error.code().message());
    }
}

// Files are refused before any is written. Two with one name would replace each other.
std::vector<Destination> Destinations(const SalvageRequest& request)
{
    std::vector<Destination> all{request.output};
    for (const auto& other : {request.map, request.picture}) {
        if (!other) {
            continue;
        }
        for (const Destination& before : all) {
            if (before.name == other->name) {
                throw Failure(ExitCode::Usage, other->name, "is to hold two things");
            }
        }
        all.push_back(*other);
    }
    return all;
}

// Saves the data set with the views, processors and unknown sections of the header, and tells whether they are kept:
// not if the end of the header is lost, and perhaps half a section with it, or if nothing would open with them.
bool SaveWithSections(const salvage::Salvaged& salvaged, OutputFile& output)
{
    const CarriedSections carried(salvaged.headerText);
    const std::string saved = SaveModel(*salvaged.dataSet, output);
    if (carried.Text().empty()) {
        return true;
    }
    if (salvaged.header == salvage::HeaderState::Cut) {
        return false;
    }
    InsertIntoHeader(output, saved, carried.Text());
    if (InspectQuietly(saved).Opens()) {
        return true;
    }
    SaveModel(*salvaged.dataSet, output);
    return false;
}

} // namespace

SalvageOutcome SalvageFile(const SalvageRequest& request)
{
    ComplainOfErrors(InspectFile(request.file));
    for (const Destination& destination : Destinations(request)) {
        RequireOtherFile(request.file, destination.name);
        const OutputFile refusesWhatIsBoundToFail(destination);
    }
    const salvage::Salvaged salvaged = Read(request);
    if (!salvaged.HasContent()) {
        throw Failure(ExitCode::Damaged, request.file, "nothing in it is certain, and nothing was saved");
    }
    std::string map = ToJson(salvaged, request.file, request.output.name);
    if (request.map) {
        OutputFile file(*request.map);
        file.Write(map);
        file.Close();
        map.clear();
    }
    if (request.picture) {
        OutputFile file(*request.picture);
        WritePicture(salvaged, file);
        file.Close();
    }
    // The last to appear: if anything fails, it is as it was.
    OutputFile output(request.output);
    const bool sectionsAreKept = SaveWithSections(salvaged, output);
    output.Close();
    std::vector<std::string> sentences = ToSentences(salvaged);
    if (!sectionsAreKept) {
        sentences.emplace_back("its views, processors and unknown sections are not kept, since its header is damaged.");
    }
    return {std::move(map), std::move(sentences)};
}

} // namespace oxd
