// Headers that a file may have had: read as far as they can be, and repaired so that everything fits.
#pragma once

#include "salvage/FileImage.h"
#include "salvage/Repairs.h"

#include "inspect/Inspection.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include <cstddef>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltaris::salvage {

// A header of which everything can be read that does not depend on what cannot: sections that keep it from opening
// count as empty.
class CLegible
{
public:
    CLegible(std::istream& file, std::string fileName, FileImage image);

    const FileImage& Original() const { return m_original; }
    const FileImage& Image() const { return m_image; } // without those sections
    const inspect::Inspection& Inspected() const { return m_inspection; }
    const inspect::CHeaderLines& Lines() const { return *m_lines; }
    const inspect::CSectionUses& Uses() const { return *m_uses; }
    const std::string& FileName() const { return m_fileName; }
    bool IsRead() const { return m_isRead; } // false where the list of channels itself cannot be read
    std::istream& File() const { return m_file; }

private:
    void Read();
    bool RemoveUnreadable();

    std::istream& m_file;
    std::string m_fileName;
    FileImage m_original;
    FileImage m_image;
    inspect::Inspection m_inspection;
    std::unique_ptr<inspect::CHeaderLines> m_lines;
    std::unique_ptr<inspect::CSectionUses> m_uses;
    bool m_isRead = false;
};

// A header without any sign of damage, which accounts for all bytes of the file.
struct Survivor
{
    FileImage image;
    inspect::Inspection inspection; // of the image
    std::optional<Repair> repair;
};

// The image, if its header is such a one.
std::optional<Survivor> Survive(std::istream& file, const std::string& fileName, FileImage image);

// All that one byte of this header may have been, so that the header that was written is among them if a single byte
// of it was damaged; or none.
std::vector<Survivor> FindSurvivors(const CLegible& header);

// The first channel for which another size, one byte away, would make the samples fit the bytes of the file; the
// number of channels if there is none.
std::size_t FirstOtherNumber(const CLegible& header);

} // namespace veltaris::salvage
