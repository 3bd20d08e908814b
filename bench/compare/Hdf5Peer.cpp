#include "compare/Peers.h"

#include <hdf5.h>

#include <array>
#include <stdexcept>

namespace bench {

namespace {

// Owns an identifier of the library and closes it.
class CId
{
public:
    CId(hid_t id, herr_t (*close)(hid_t)) : m_id(id), m_close(close)
    {
        if (id < 0)
            throw std::runtime_error("HDF5 failed");
    }
    CId(const CId&) = delete;
    CId& operator=(const CId&) = delete;
    ~CId() { m_close(m_id); }
    operator hid_t() const { return m_id; } // NOLINT(google-explicit-constructor): it stands for the number

private:
    hid_t m_id;
    herr_t (*m_close)(hid_t);
};

void Require(herr_t status)
{
    if (status < 0)
        throw std::runtime_error("HDF5 failed");
}

class CHdf5Peer : public CImagePeer
{
public:
    CHdf5Peer() : CImagePeer("HDF5") {}

    void Write(const std::string& path, const Shape& shape, const Produce& line) const override
    {
        const CId file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT), H5Fclose);
        const std::array<hsize_t, 2> size{shape.lines, shape.points};
        const CId space(H5Screate_simple(2, size.data(), nullptr), H5Sclose);
        const CId image(H5Dcreate2(file, "image", H5T_STD_I16LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT),
                        H5Dclose);
        ForEachLine(shape, space, [&](hid_t lineSpace, std::uint64_t i) {
            Require(H5Dwrite(image, H5T_NATIVE_INT32, lineSpace, space, H5P_DEFAULT, line(i)));
        });
    }

    void Read(const std::string& path, const Shape& shape, const Consume& line) const override
    {
        const CId file(H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose);
        const CId image(H5Dopen2(file, "image", H5P_DEFAULT), H5Dclose);
        const CId space(H5Dget_space(image), H5Sclose);
        std::vector<std::int32_t> samples(shape.points);
        ForEachLine(shape, space, [&](hid_t lineSpace, std::uint64_t) {
            Require(H5Dread(image, H5T_NATIVE_INT32, lineSpace, space, H5P_DEFAULT, samples.data()));
            line(samples);
        });
    }

    void Load(const std::string& path, const Shape&, std::int32_t* samples) const override
    {
        LoadAs(path, H5T_NATIVE_INT32, samples);
    }

    void LoadStored(const std::string& path, const Shape&, std::int16_t* samples) const override
    {
        LoadAs(path, H5T_NATIVE_INT16, samples);
    }

private:
    // Selects each line of the image in turn.
    template <class Use>
    static void ForEachLine(const Shape& shape, hid_t space, Use use)
    {
        const std::array<hsize_t, 2> size{1, shape.points};
        const CId lineSpace(H5Screate_simple(2, size.data(), nullptr), H5Sclose);
        for (std::uint64_t i = 0; i < shape.lines; ++i) {
            const std::array<hsize_t, 2> start{i, 0};
            Require(H5Sselect_hyperslab(space, H5S_SELECT_SET, start.data(), nullptr, size.data(), nullptr));
            use(lineSpace, i);
        }
    }

    static void LoadAs(const std::string& path, hid_t type, void* samples)
    {
        const CId file(H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose);
        const CId image(H5Dopen2(file, "image", H5P_DEFAULT), H5Dclose);
        Require(H5Dread(image, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, samples));
    }
};

} // namespace

std::unique_ptr<CImagePeer> MakeHdf5Peer()
{
    return std::make_unique<CHdf5Peer>();
}

} // namespace bench
