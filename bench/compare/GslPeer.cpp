#include "compare/Peers.h"

#include <gsl/gsl_multifit.h>

#include <cmath>

namespace bench {

namespace {

template <class T>
using Owned = std::unique_ptr<T, void (*)(T*)>;

class CGslPeer : public CFitPeer
{
public:
    CGslPeer(int degree, std::size_t points)
        : CFitPeer("GSL"), m_powers(gsl_matrix_alloc(points, static_cast<std::size_t>(degree) + 1), gsl_matrix_free),
          m_covariance(gsl_matrix_alloc(m_powers->size2, m_powers->size2), gsl_matrix_free),
          m_coefficients(gsl_vector_alloc(m_powers->size2), gsl_vector_free),
          m_line(gsl_vector_alloc(points), gsl_vector_free), m_residuals(gsl_vector_alloc(points), gsl_vector_free),
          m_workspace(gsl_multifit_linear_alloc(points, m_powers->size2), gsl_multifit_linear_free)
    {
        for (std::size_t i = 0; i < points; ++i) {
            for (std::size_t k = 0; k < m_powers->size2; ++k)
                gsl_matrix_set(m_powers.get(), i, k,
                               std::pow(2.0 * static_cast<double>(i) / static_cast<double>(points) - 1, k));
        }
    }

    void Apply(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) override
    {
        for (std::size_t i = 0; i < line.size(); ++i)
            gsl_vector_set(m_line.get(), i, line[i]);
        double squares = 0;
        gsl_multifit_linear(m_powers.get(), m_line.get(), m_coefficients.get(), m_covariance.get(), &squares,
                            m_workspace.get());
        gsl_multifit_linear_residuals(m_powers.get(), m_line.get(), m_coefficients.get(), m_residuals.get());
        for (std::size_t i = 0; i < line.size(); ++i)
            corrected[i] = static_cast<std::int32_t>(gsl_vector_get(m_residuals.get(), i));
    }

private:
    Owned<gsl_matrix> m_powers;
    Owned<gsl_matrix> m_covariance;
    Owned<gsl_vector> m_coefficients;
    Owned<gsl_vector> m_line;
    Owned<gsl_vector> m_residuals;
    Owned<gsl_multifit_linear_workspace> m_workspace;
};

} // namespace

std::unique_ptr<CFitPeer> MakeGslPeer(int degree, std::uint64_t points)
{
    return std::make_unique<CGslPeer>(degree, points);
}

} // namespace bench
