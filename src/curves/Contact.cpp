#include "curves/Contact.h"

#include "curves/PowerLaw.h"
#include "curves/Stretch.h"

#include <algorithm>
#include <cmath>

namespace veltaris::curves {

namespace {

// The search for one contact point. Indices are those of the curve.
class CSearch
{
public:
    CSearch(const CCurve& curve, const CBaseline& baseline, const CCurveOptions& options)
        : m_curve(curve), m_baseline(baseline), m_options(options), m_sign(SignOf(options.repulsion)),
          m_inward(InwardStep(curve, baseline)), m_level(options.threshold * baseline.width)
    {
    }

    CContact Find();

private:
    double HeightAt(std::size_t index) const
    {
        return m_sign * (m_curve.signal[index] - m_baseline.line.ValueAt(static_cast<double>(index)));
    }
    bool FindCrossing();
    void ChoosePoints();
    Reason FitLine();
    Reason FitPower();
    CPowerLaw PowerLawOver(double raise) const;
    double Crossing() const;
    double Uncertainty(double index) const;

    const CCurve& m_curve;
    const CBaseline& m_baseline;
    const CCurveOptions& m_options;
    double m_sign;
    double m_inward;           // step towards the surface
    double m_level;            // above which a point is behind the crossing
    std::size_t m_outside = 0; // the point ahead of the crossing
    CIndexRange m_behind;      // all points behind it, then those that are fitted
    CContact m_contact;
};

// Finds the point ahead of the last crossing and the points behind it.
bool CSearch::FindCrossing()
{
    const std::size_t count = m_curve.signal.size();
    const CIndexRange whole{0, count};
    const auto find = m_baseline.surfaceAtEnd ? CurveKernels().lastAtMost : CurveKernels().firstAtMost;
    m_outside = find(StretchOf(m_curve, whole), TrendOf(m_baseline.line, whole), m_sign, m_level);
    if (m_outside == count)
        return false;
    const bool atEnd = m_baseline.surfaceAtEnd;
    m_behind =
        AcquiredPart(m_curve, atEnd ? CIndexRange{m_outside + 1, count - m_outside - 1} : CIndexRange{0, m_outside});
    return m_behind.count >= leastContactPoints;
}

// Keeps those points behind the crossing that are next to it.
void CSearch::ChoosePoints()
{
    const std::size_t count =
        std::clamp(ShareOf(m_behind.count, m_options.fitShare), leastContactPoints, m_behind.count);
    if (!m_baseline.surfaceAtEnd)
        m_behind.first += m_behind.count - count;
    m_behind.count = count;
    m_behind = AcquiredPart(m_curve, m_behind);
}

// Where the line between the two points beside the crossing reaches the threshold.
double CSearch::Crossing() const
{
    const std::size_t inside = m_baseline.surfaceAtEnd ? m_behind.first : m_behind.Last();
    const double ahead = HeightAt(m_outside);
    const auto from = static_cast<double>(m_outside);
    const double steps = static_cast<double>(inside) - from;
    return m_curve.PositionOf(from + steps * (m_level - ahead) / (HeightAt(inside) - ahead));
}

// The standard error of the index at which the fitted line reaches the baseline.
double CSearch::Uncertainty(double index) const
{
    const double noise = std::max(m_baseline.noise, m_contact.line.residual);
    const double variance =
        m_contact.line.VarianceAt(index, noise) + m_baseline.line.VarianceAt(index, m_baseline.noise);
    return std::sqrt(variance) / std::abs(m_contact.line.tilt);
}

Reason CSearch::FitLine()
{
    const CTrend chord = ChordOf(m_curve, m_behind);
    const CSums sums = CurveKernels().sums(StretchOf(m_curve, m_behind), chord);
    if (sums.points < static_cast<double>(leastContactPoints))
        return Reason::NoContact;
    if (IsSaturated(sums, m_options.limits))
        return Reason::Saturated;
    CLineFit& line = m_contact.line;
    line = LineOf(sums, chord, m_behind);
    line.level -= m_baseline.line.ValueAt(line.meanIndex);
    line.tilt -= m_baseline.line.tilt;
    const double index = line.meanIndex - line.level / line.tilt;
    const bool isWithin = index >= 0 && index <= static_cast<double>(m_curve.signal.size() - 1);
    if (!(m_sign * line.tilt / m_inward > 0) || !isWithin)
        return Reason::NoContact;
    m_contact.points = static_cast<std::size_t>(line.points);
    m_contact.position = m_curve.PositionOf(index);
    m_contact.error = Uncertainty(index) * std::abs(m_inward);
    m_contact.slope = line.tilt / m_inward;
    return Reason::None;
}

// The law through the points that are above the baseline, once they are raised. Counts positions from the point ahead
// of the crossing.
CPowerLaw CSearch::PowerLawOver(double raise) const
{
    CPowerLaw law(m_options.law);
    for (std::size_t i = m_behind.first; i <= m_behind.Last(); ++i) {
        const double height = HeightAt(i);
        if (IsAcquired(height) && height > 0)
            law.Add(m_inward * (static_cast<double>(i) - static_cast<double>(m_outside)),
                    m_options.calibration.sensitivity * (height + raise));
    }
    return law;
}

// The error has two parts: that of the law, and by how much the contact point moves with the error of the baseline.
Reason CSearch::FitPower()
{
    if (std::isnan(m_options.calibration.sensitivity))
        return Reason::NotCalibrated;
    const CPowerLaw law = PowerLawOver(0);
    const double index = static_cast<double>(m_outside) + law.Begin() / m_inward;
    if (!law.Rises() || !(index >= 0 && index <= static_cast<double>(m_curve.signal.size() - 1)))
        return Reason::NoContact;
    m_contact.position = m_curve.PositionOf(index);
    const double raise = std::sqrt(m_baseline.line.VarianceAt(index, m_baseline.noise));
    const double moved = PowerLawOver(raise).Begin() - law.Begin();
    m_contact.error = std::sqrt(law.ErrorOfBegin() * law.ErrorOfBegin() + moved * moved);
    return Reason::None;
}

CContact CSearch::Find()
{
    if (!FindCrossing())
        return {Reason::NoContact};
    ChoosePoints();
    Reason reason = FitLine();
    if (reason == Reason::None && m_options.law != ContactLaw::Line)
        reason = FitPower();
    if (reason != Reason::None)
        return {reason};
    m_contact.reason = reason;
    m_contact.crossing = Crossing();
    return m_contact;
}

} // namespace

CContact FindContact(const CCurve& curve, const CBaseline& baseline, const CCurveOptions& options)
{
    if (baseline.reason != Reason::None)
        return {baseline.reason};
    if (Check(options) != Reason::None)
        return {Reason::BadOptions};
    return CSearch(curve, baseline, options).Find();
}

} // namespace veltaris::curves
