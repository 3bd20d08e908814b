// Other libraries that do parts of the same. Each is optional: Peers.cpp knows which of them were there to build with.
#pragma once

#include "support/Image.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace bench {

// A library that stores images. Samples are stored ones in what the file has, held in 32 bits unless said otherwise.
class CImagePeer
{
public:
    using Produce = std::function<const std::int32_t*(std::uint64_t line)>;
    using Consume = std::function<void(std::span<const std::int32_t> line)>;

    explicit CImagePeer(std::string name) : m_name(std::move(name)) {}
    CImagePeer(const CImagePeer&) = delete;
    CImagePeer& operator=(const CImagePeer&) = delete;
    virtual ~CImagePeer() = default;

    const std::string& Name() const { return m_name; }

    // A file of 16 bits a sample, written and read line by line.
    virtual void Write(const std::string& path, const Shape& shape, const Produce& line) const = 0;
    virtual void Read(const std::string& path, const Shape& shape, const Consume& line) const = 0;
    // The whole image at once: widened, and as it is stored.
    virtual void Load(const std::string& path, const Shape& shape, std::int32_t* samples) const = 0;
    virtual void LoadStored(const std::string& path, const Shape& shape, std::int16_t* samples) const = 0;

private:
    std::string m_name;
};

// A library that fits polynomials. Made for one degree and length.
class CFitPeer
{
public:
    explicit CFitPeer(std::string name) : m_name(std::move(name)) {}
    CFitPeer(const CFitPeer&) = delete;
    CFitPeer& operator=(const CFitPeer&) = delete;
    virtual ~CFitPeer() = default;

    const std::string& Name() const { return m_name; }
    virtual void Apply(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) = 0;

private:
    std::string m_name;
};

std::vector<std::shared_ptr<const CImagePeer>> ImagePeers();
std::vector<std::shared_ptr<CFitPeer>> FitPeers(int degree, std::uint64_t points);
// Names of those that were not there.
std::vector<std::string> MissingPeers();

std::unique_ptr<CImagePeer> MakeHdf5Peer();
std::unique_ptr<CImagePeer> MakeFitsPeer();
std::unique_ptr<CImagePeer> MakeTiffPeer();
std::unique_ptr<CFitPeer> MakeGslPeer(int degree, std::uint64_t points);
std::unique_ptr<CFitPeer> MakeEigenPeer(int degree, std::uint64_t points);

} // namespace bench
