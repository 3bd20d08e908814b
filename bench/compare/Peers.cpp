#include "compare/Peers.h"

namespace bench {

std::vector<std::shared_ptr<const CImagePeer>> ImagePeers()
{
    std::vector<std::shared_ptr<const CImagePeer>> peers;
#ifdef BENCH_HAS_HDF5
    peers.push_back(MakeHdf5Peer());
#endif
#ifdef BENCH_HAS_CFITSIO
    peers.push_back(MakeFitsPeer());
#endif
#ifdef BENCH_HAS_TIFF
    peers.push_back(MakeTiffPeer());
#endif
    return peers;
}

std::vector<std::shared_ptr<CFitPeer>> FitPeers([[maybe_unused]] int degree, [[maybe_unused]] std::uint64_t points)
{
    std::vector<std::shared_ptr<CFitPeer>> peers;
#ifdef BENCH_HAS_GSL
    peers.push_back(MakeGslPeer(degree, points));
#endif
#ifdef BENCH_HAS_EIGEN
    peers.push_back(MakeEigenPeer(degree, points));
#endif
    return peers;
}

std::vector<std::string> MissingPeers()
{
    return {
#ifndef BENCH_HAS_HDF5
        "HDF5",
#endif
#ifndef BENCH_HAS_CFITSIO
        "CFITSIO",
#endif
#ifndef BENCH_HAS_TIFF
        "libtiff",
#endif
#ifndef BENCH_HAS_GSL
        "GSL",
#endif
#ifndef BENCH_HAS_EIGEN
        "Eigen",
#endif
    };
}

} // namespace bench
