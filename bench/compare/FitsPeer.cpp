#include "compare/Peers.h"

#include <fitsio.h>

#include <array>
#include <stdexcept>

namespace bench {

namespace {

class CFits
{
public:
    CFits(const std::string& path, bool create)
    {
        // A "!" allows overwriting; opening as a disk file turns the library's extended file name syntax off.
        if (create)
            fits_create_file(&m_file, ("!" + path).c_str(), &m_status);
        else
            fits_open_diskfile(&m_file, path.c_str(), READONLY, &m_status);
        Check();
    }
    CFits(const CFits&) = delete;
    CFits& operator=(const CFits&) = delete;
    ~CFits() { fits_close_file(m_file, &m_status); }

    // Calls a function of the library with the file first and the status last.
    template <class Function, class... Arguments>
    void Call(Function function, Arguments... arguments)
    {
        function(m_file, arguments..., &m_status);
        Check();
    }

private:
    void Check() const
    {
        if (m_status != 0)
            throw std::runtime_error("CFITSIO failed: " + std::to_string(m_status));
    }

    fitsfile* m_file = nullptr;
    int m_status = 0;
};

class CFitsPeer : public CImagePeer
{
public:
    CFitsPeer() : CImagePeer("CFITSIO") {}

    void Write(const std::string& path, const Shape& shape, const Produce& line) const override
    {
        CFits file(path, true);
        std::array<long, 2> size{static_cast<long>(shape.points), static_cast<long>(shape.lines)};
        file.Call(ffcrim, SHORT_IMG, 2, size.data());
        for (std::uint64_t i = 0; i < shape.lines; ++i)
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the library only reads the samples
            file.Call(ffppr, TINT, FirstOf(shape, i), size[0], const_cast<std::int32_t*>(line(i)));
    }

    void Read(const std::string& path, const Shape& shape, const Consume& line) const override
    {
        CFits file(path, false);
        std::vector<std::int32_t> samples(shape.points);
        for (std::uint64_t i = 0; i < shape.lines; ++i) {
            ReadFrom(file, TINT, FirstOf(shape, i), shape.points, samples.data());
            line(samples);
        }
    }

    void Load(const std::string& path, const Shape& shape, std::int32_t* samples) const override
    {
        CFits file(path, false);
        ReadFrom(file, TINT, 1, shape.Samples(), samples);
    }

    void LoadStored(const std::string& path, const Shape& shape, std::int16_t* samples) const override
    {
        CFits file(path, false);
        ReadFrom(file, TSHORT, 1, shape.Samples(), samples);
    }

private:
    static LONGLONG FirstOf(const Shape& shape, std::uint64_t line)
    {
        return static_cast<LONGLONG>(line * shape.points) + 1;
    }

    static void ReadFrom(CFits& file, int type, LONGLONG first, std::uint64_t count, void* samples)
    {
        void* const noNulls = nullptr;
        int* const unused = nullptr;
        file.Call(ffgpv, type, first, static_cast<LONGLONG>(count), noNulls, samples, unused);
    }
};

} // namespace

std::unique_ptr<CImagePeer> MakeFitsPeer()
{
    return std::make_unique<CFitsPeer>();
}

} // namespace bench
