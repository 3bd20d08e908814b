// Other libraries that the library is compared with. Each is optional; Peers.cpp knows which of them were installed at
// build time.
#pragma once

#include "support/Image.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace bench {

// A library that stores images. Its samples have the values that are stored in the file, and the type std::int32_t
// unless said otherwise. Implementations keep no state between calls and throw std::runtime_error on failure.
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

    // Write and read a file of 16 bits per sample line by line.
    virtual void Write(const std::string& path, const Shape& shape, const Produce& line) const = 0;
    virtual void Read(const std::string& path, const Shape& shape, const Consume& line) const = 0;
    // Read the whole image at once, widened to 32 bits or in the type that is stored.
    virtual void Load(const std::string& path, const Shape& shape, std::int32_t* samples) const = 0;
    virtual void LoadStored(const std::string& path, const Shape& shape, std::int16_t* samples) const = 0;

private:
    std::string m_name;
};

// A library that fits polynomials. An object serves one degree and one length of line, and reuses its buffers: it is
// not thread-safe.
class CFitPeer
{
public:
    explicit CFitPeer(std::string name) : m_name(std::move(name)) {}
    CFitPeer(const CFitPeer&) = delete;
    CFitPeer& operator=(const CFitPeer&) = delete;
    virtual ~CFitPeer() = default;

    const std::string& Name() const { return m_name; }
    // Subtracts the fitted polynomial from the line.
    virtual void Apply(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) = 0;

private:
    std::string m_name;
};

// The peers that were installed at build time.
std::vector<std::shared_ptr<const CImagePeer>> ImagePeers();
std::vector<std::shared_ptr<CFitPeer>> FitPeers(int degree, std::uint64_t points);
// The names of those that were not.
std::vector<std::string> MissingPeers();

std::unique_ptr<CImagePeer> MakeHdf5Peer();
std::unique_ptr<CImagePeer> MakeFitsPeer();
std::unique_ptr<CImagePeer> MakeTiffPeer();
std::unique_ptr<CFitPeer> MakeGslPeer(int degree, std::uint64_t points);
std::unique_ptr<CFitPeer> MakeEigenPeer(int degree, std::uint64_t points);

} // namespace bench
