// A line operator, which corrects one line of raw samples. LineOperators.h has the functions of the operators, and
// LineOperatorTable.h lists and finds them.
#pragma once

#include "velflexlib/dataset/samples/SampleBlock.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace veltaris::velflexlib::dataset {

// The value of an identifier is the code that stands for the operator in files and in the interface.
enum class LineOpID
{
    RawData = 0,
    MeanFit = 1,
    LineFit = 2,
    DerivedData = 3,
    ParabolaFit = 4,
    PolynomialFit = 5,
};

// What an operator must know of a whole line before it can correct any part of it: the coefficients of the polynomial
// in the index of a sample that is to be subtracted, in ascending order of powers.
using CLineFit = std::array<double, 5>;

// Where a corrected pixel comes from. That of raw data is the stored sample itself, which is read without a call of
// Apply(): reading pixel by pixel is to be fast.
enum class PixelSource
{
    StoredSample,
    CorrectedChunk,
};

// One row of the table of operators. A line is corrected in two steps, so that it can be corrected chunk by chunk, and
// so that single pixels of it can: the fit looks at the whole line once, and Apply() then corrects any chunk of it.
//
// The fits count every sample of the line. A fitted value is cut towards zero before it is subtracted, and the result
// is clamped to the raw range. The two ends of the raw range are markers, for example of missing points: they take part
// in the fit, but are never altered.
//
// Immutable: can be used by any number of threads at once.
class CLineOperator
{
public:
    using FitFunction = CLineFit (*)(const CStoredSamples& line);
    using ApplyFunction = void (*)(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                                   std::span<std::int32_t> corrected);

    // `fit` is null for a local operator. The text behind `displayName` lives as long as the program.
    constexpr CLineOperator(LineOpID id, std::string_view displayName, std::uint64_t leastSamples, FitFunction fit,
                            ApplyFunction apply, PixelSource pixelSource)
        : m_id(id), m_displayName(displayName), m_leastSamples(leastSamples), m_fit(fit), m_apply(apply),
          m_pixelSource(pixelSource)
    {
    }
    CLineOperator(const CLineOperator&) = delete;
    CLineOperator& operator=(const CLineOperator&) = delete;
    ~CLineOperator() = default;

    constexpr LineOpID GetID() const { return m_id; }
    constexpr std::string_view GetDisplayName() const { return m_displayName; }

    // A line with fewer samples than this yields no corrected samples. Any other line yields as many as it has.
    std::uint64_t GetLeastSamples() const { return m_leastSamples; }

    // A local operator needs no fit: each corrected sample depends only on the sample itself and its neighbour.
    bool IsLocal() const { return m_fit == nullptr; }

    PixelSource GetPixelSource() const { return m_pixelSource; }

    // Not for local operators. The line must have at least GetLeastSamples() samples.
    CLineFit Fit(const CStoredSamples& line) const { return m_fit(line); }

    // Writes the corrected samples from index `first` on to all of `corrected`. The line must have that many samples
    // from there on, and at least GetLeastSamples(). A local operator ignores `fit`; for any other it is what Fit()
    // returned for this line.
    void Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
               std::span<std::int32_t> corrected) const
    {
        m_apply(fit, line, first, corrected);
    }

private:
    LineOpID m_id;
    std::string_view m_displayName;
    std::uint64_t m_leastSamples;
    FitFunction m_fit;
    ApplyFunction m_apply;
    PixelSource m_pixelSource;
};

} // namespace veltaris::velflexlib::dataset
