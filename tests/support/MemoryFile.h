// A file that is nowhere but in memory, with a path that it can be opened and saved by.
#pragma once

#include <string>
#include <string_view>

class CMemoryFile
{
public:
    CMemoryFile();
    CMemoryFile(const CMemoryFile&) = delete;
    CMemoryFile& operator=(const CMemoryFile&) = delete;
    ~CMemoryFile();

    const std::string& Path() const { return m_path; }
    void Write(std::string_view bytes) const;
    std::string Read() const;

private:
    int m_descriptor;
    std::string m_path;
};
