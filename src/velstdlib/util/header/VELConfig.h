// A header as a document: found at the beginning of a data file and read, or written to a file of its own.
#pragma once

#include "velstdlib/util/header/HeaderSection.h"
#include "velstdlib/util/header/IniFileContent.h"

#include <boost/core/noncopyable.hpp>

#include <atomic>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace veltaris::velstdlib::util {

// Owns its sections; what is handed out of them lives until the document is read again, cleared or destroyed, or its
// content is swapped. At most one section is active at a time. Not thread-safe: a file's document belongs to whoever
// uses the file's handle.
class CVELConfig : private boost::noncopyable
{
public:
    virtual ~CVELConfig() = default;

    CIniFileContent& GetContent() { return *m_content; }
    const CIniFileContent& GetContent() const { return *m_content; }
    // Exchanges the sections of both documents, and nothing else of them.
    void SwapContent(CVELConfig& other) noexcept { m_content.swap(other.m_content); }

    // Makes the section of this name the active one and hands it to a reader, the name as given. SelectSection leaves
    // a missing section missing, and the result is nothing; SelectCreateSection creates it.
    std::optional<CHeaderSection> SelectSection(std::string_view name);
    CHeaderSection SelectCreateSection(std::string_view name);

    // The file that the document belongs to: SaveKeys writes it, and failures to read the document name it.
    const std::string& GetFileName() const { return m_fileName; }
    void SetFileName(std::string fileName) { m_fileName = std::move(fileName); }

    // True until a header was read.
    bool IsNew() const { return m_isNew; }

    // How many bytes the header has in the stream that it was read from, end mark included.
    std::uint64_t GetHeaderBytes() const { return m_headerBytes; }
    // How many bytes follow the header in the stream that it was read from.
    std::uint64_t GetDataBytes() const { return m_dataBytes; }

    // Replaces the document by the header in `stream`, which ends with the first end mark, and leaves the stream behind
    // that. False, with the document left empty, when there is no mark or nothing before it, or when the stream
    // fails while it is searched.
    // Throws CVELFileBadContentException for a header above the limit, and what parsing throws.
    bool ReadHeader(std::istream& stream, const std::atomic<bool>& abort);

    // The same for a header that was read already, with its end mark, and for the bytes that follow it.
    void ParseHeader(std::string bytes, std::uint64_t dataBytes, const std::atomic<bool>& abort);

    void Clear();

    // Writes the document alone. Throws CVELFileOpenException, and std::ios_base::failure when writing fails.
    void SaveKeys() const;

private:
    std::unique_ptr<CIniFileContent> m_content = std::make_unique<CIniFileContent>();
    std::string m_fileName;
    bool m_isNew = true;
    std::uint64_t m_headerBytes = 0;
    std::uint64_t m_dataBytes = 0;
};

// The position behind the first end mark in a stream, which is read from where it is and has so many bytes; 0 when
// there is no mark, and when the stream fails: a file that cannot be read is treated as one without a header.
std::uint64_t FindHeaderEnd(std::istream& stream, std::uint64_t fileBytes);

// The header of an .oxd file.
class CVELOXDConfig : public CVELConfig
{
};

} // namespace veltaris::velstdlib::util
