#include "compare/Peers.h"

#include <Eigen/Dense>

#include <cmath>

namespace bench {

namespace {

// The decomposition is computed once. Each line then takes one product with the transposed Q and one with Q.
class CEigenPeer : public CFitPeer
{
public:
    CEigenPeer(int degree, Eigen::Index points) : CFitPeer("Eigen"), m_line(points)
    {
        Eigen::MatrixXd powers(points, degree + 1);
        for (Eigen::Index i = 0; i < points; ++i) {
            for (Eigen::Index k = 0; k <= degree; ++k)
                powers(i, k) = std::pow(2.0 * static_cast<double>(i) / static_cast<double>(points) - 1, k);
        }
        m_q = Eigen::HouseholderQR<Eigen::MatrixXd>(powers).householderQ() *
              Eigen::MatrixXd::Identity(points, degree + 1);
    }

    void Apply(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) override
    {
        using Samples = Eigen::VectorX<std::int32_t>;
        const auto count = static_cast<Eigen::Index>(line.size());
        m_line = Eigen::Map<const Samples>(line.data(), count).cast<double>();
        m_coefficients.noalias() = m_q.transpose() * m_line;
        m_line.noalias() -= m_q * m_coefficients;
        Eigen::Map<Samples>(corrected.data(), count) = m_line.cast<std::int32_t>();
    }

private:
    Eigen::MatrixXd m_q;
    Eigen::VectorXd m_line;
    Eigen::VectorXd m_coefficients;
};

} // namespace

std::unique_ptr<CFitPeer> MakeEigenPeer(int degree, std::uint64_t points)
{
    return std::make_unique<CEigenPeer>(degree, static_cast<Eigen::Index>(points));
}

} // namespace bench
