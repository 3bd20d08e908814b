#include "inspect/Inspection.h"

#include "inspect/ContentChecks.h"
#include "inspect/FindingList.h"
#include "inspect/HeaderChecks.h"
#include "inspect/OpeningFailure.h"
#include "inspect/SampleLayout.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/VELConfig.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <new>
#include <system_error>
#include <utility>

namespace veltaris::inspect {

namespace dataset = velflexlib::dataset;
namespace util = velstdlib::util;

namespace {

[[noreturn]] void ThrowSystem(int error, const std::string& what)
{
    if (error == ENOMEM)
        throw std::bad_alloc();
    throw std::system_error(error, std::generic_category(), what);
}

// A name of bytes in UTF-8.
std::filesystem::path ToPath(const std::string& fileName)
{
    return {std::u8string(fileName.begin(), fileName.end())};
}

// Opening a pipe would wait for its other end.
void CheckIsFile(const std::filesystem::path& path, const std::string& fileName)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::directory)
        ThrowSystem(EISDIR, fileName);
    if (std::filesystem::exists(status) && status.type() != std::filesystem::file_type::regular)
        ThrowSystem(EINVAL, fileName);
}

std::uint64_t LengthOf(std::istream& stream)
{
    stream.seekg(0, std::ios::end);
    const auto length = stream.tellg();
    if (length < 0)
        ThrowSystem(EIO, "seek");
    stream.seekg(0);
    return static_cast<std::uint64_t>(length);
}

// Reads and judges one file, in the order in which the library opens it.
class CInspector
{
public:
    CInspector(std::istream& stream, Inspection& inspection) : m_stream(stream), m_inspection(inspection) {}

    void Run()
    {
        m_inspection.fileBytes = LengthOf(m_stream);
        const std::uint64_t headerBytes = util::FindHeaderEnd(m_stream, m_inspection.fileBytes);
        RequireRead();
        const bool isTooLong = headerBytes > util::limits::headerBytes;
        const bool hasHeader = headerBytes > util::headerEndMark.size();
        m_inspection.headerBytes = hasHeader ? headerBytes : 0;
        if (hasHeader && !isTooLong)
            ReadHeader();
        const CHeaderLines lines(m_inspection.header);
        CFindingList findings(lines);
        if (hasHeader)
            InspectHeader(lines, findings);
        else
            findings.AddPlace(RuleId::NoEndMark, 0, {},
                              {"an empty data set", "The file has no header that ends with \"#!\"."});
        m_inspection.findings = findings.Take();
    }

private:
    // The search for the end of the header takes a read that fails for the end of the file.
    void RequireRead() const
    {
        if (m_stream.fail())
            ThrowSystem(EIO, m_inspection.file);
    }

    void ReadHeader()
    {
        std::string& bytes = m_inspection.header;
        bytes.resize(m_inspection.headerBytes);
        m_stream.seekg(0);
        m_stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    void Parse()
    {
        m_document.SetFileName(m_inspection.file);
        if (m_inspection.header.empty())
            util::ThrowBadContent(m_inspection.file); // it is too long
        m_document.ParseHeader(m_inspection.header, m_inspection.fileBytes - m_inspection.headerBytes, m_abort);
    }

    void InspectHeader(const CHeaderLines& lines, CFindingList& findings)
    {
        const CSectionUses uses(lines);
        CheckLines(lines, uses, findings);
        try {
            Parse();
        } catch (const std::exception&) {
            return AddUnreadableText(std::current_exception(), lines, findings);
        }
        m_inspection.version = uses.Version();
        CheckKeys(lines, uses, findings);
        CheckAxisKeys(lines, uses, findings);
        CheckLinks(lines, uses, findings);
        InspectSections(lines, uses, findings);
    }

    void InspectSections(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
    {
        bool isWhole = true;
        std::uint32_t failedSection = noSection;
        dataset::CDataSetToVELConfig serialiser(*m_inspection.dataSet);
        try {
            serialiser.LoadHeader(m_document, std::string(dataSetName), m_abort);
        } catch (const std::exception&) {
            isWhole = false;
            failedSection = AddUnreadableSection(std::current_exception(), lines, uses, findings);
        }
        CSampleLayout layout({m_inspection.fileBytes, m_inspection.headerBytes}, lines, uses, findings);
        if (const auto plan = Plan())
            layout.Place(*plan, *m_inspection.dataSet);
        layout.Judge(isWhole, failedSection);
        m_inspection.claimedBytes = layout.ClaimedBytes();
        for (const PlacedChannel& channel : layout.Channels())
            m_inspection.channels.push_back(channel.samples);
        CheckChannels(layout.Channels(), lines, uses, findings);
        if (!isWhole)
            return;
        CheckVersion(uses, findings);
        CheckTexts(lines, uses, findings);
        CheckInformation(*m_inspection.dataSet, lines, uses, findings);
    }

    // Nothing when the section that lists the channels cannot be read, which was found when it was read before.
    std::optional<dataset::CDataSetPlan> Plan()
    try {
        return dataset::ReadDataSetSection(m_document.SelectCreateSection(dataSetName));
    } catch (const util::CVELFileException&) {
        return std::nullopt;
    }

    std::istream& m_stream;
    Inspection& m_inspection;
    util::CVELOXDConfig m_document;
    const std::atomic<bool> m_abort = false;
};

} // namespace

bool Inspection::Opens() const
{
    return std::ranges::none_of(findings, [](const Finding& f) { return f.rule->stopsOpening; });
}

Inspection Inspect(const std::string& fileName)
{
    const auto path = ToPath(fileName);
    CheckIsFile(path, fileName);
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        ThrowSystem(errno == 0 ? EIO : errno, fileName);
    return InspectStream(stream, fileName);
}

Inspection InspectStream(std::istream& stream, std::string fileName)
{
    Inspection inspection;
    inspection.file = std::move(fileName);
    inspection.dataSet = std::make_shared<dataset::CDataSet>();
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    try {
        CInspector(stream, inspection).Run();
    } catch (const std::ios_base::failure&) {
        ThrowSystem(EIO, inspection.file);
    }
    return inspection;
}

} // namespace veltaris::inspect
