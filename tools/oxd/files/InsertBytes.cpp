#include "oxd/files/InsertBytes.h"

#include "oxd/files/Interruption.h"
#include "oxd/files/Require.h"

#include <algorithm>
#include <fstream>
#include <vector>

namespace oxd {

namespace {

constexpr std::uint64_t part = std::uint64_t{1} << 20;

// A file that is read and written at any place. Failures of the system are std::system_error with its reason.
class EditedFile
{
public:
    explicit EditedFile(const std::filesystem::path& name)
        : m_file(name, std::ios::in | std::ios::out | std::ios::binary)
    {
        Require(m_file.is_open());
        m_file.exceptions(std::ios::failbit | std::ios::badbit); // so that a lack of memory stays one
    }

    std::uint64_t Size()
    {
        std::streamoff size = 0;
        Try([&] {
            m_file.seekg(0, std::ios::end);
            size = m_file.tellg();
        });
        Require(size >= 0);
        return static_cast<std::uint64_t>(size);
    }

    void Move(std::uint64_t place, std::uint64_t count, std::uint64_t distance)
    {
        m_bytes.resize(count);
        Try([&] {
            m_file.seekg(static_cast<std::streamoff>(place));
            m_file.read(m_bytes.data(), static_cast<std::streamsize>(count));
        });
        Write(place + distance, {m_bytes.data(), m_bytes.size()});
    }

    void Write(std::uint64_t place, std::string_view bytes)
    {
        Try([&] {
            m_file.seekp(static_cast<std::streamoff>(place));
            m_file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            m_file.flush();
        });
    }

private:
    static void Try(const auto& step)
    {
        try {
            step();
        } catch (const std::ios_base::failure&) {
            Require(false);
        }
    }

    std::fstream m_file;
    std::vector<char> m_bytes;
};

} // namespace

// The last part goes first, so that none is overwritten before it is moved.
void InsertBytes(const std::filesystem::path& file, std::uint64_t place, std::string_view bytes)
{
    EditedFile edited(file);
    for (std::uint64_t end = edited.Size(); end > place;) {
        const std::uint64_t count = std::min(part, end - place);
        interruption::Check();
        edited.Move(end - count, count, bytes.size());
        end -= count;
    }
    edited.Write(place, bytes);
}

} // namespace oxd
