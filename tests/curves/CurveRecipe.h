// Force curves whose contact point, adhesion and slopes are known, for tests and for tables of accuracy. The numbers
// are the same on every system.
#pragma once

#include <veloxd_curves.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace recipe {

inline constexpr double notAcquired = std::numeric_limits<double>::quiet_NaN();

// Close to normally distributed with a standard deviation of 1, of operations that every processor rounds alike.
class CNoise
{
public:
    explicit CNoise(std::uint32_t seed) : m_engine(seed) {}

    double Uniform(double from, double to) { return from + (to - from) * static_cast<double>(m_engine()) * 0x1p-32; }
    double Normal()
    {
        double sum = -6;
        for (int i = 0; i < 12; ++i)
            sum += Uniform(0, 1);
        return sum;
    }

private:
    std::mt19937 m_engine;
};

// Lengths are in metres. Positions rise towards the surface; the cantilever bends by `stiffness` times the travel
// behind the contact point, and the surface gives way by the rest.
struct CRecipe
{
    std::size_t points = 512;
    double start = 0;
    double step = 1e-9;
    double contact = 350e-9;
    double stiffness = 0.75;
    double tilt = 0.005;
    double offset = 2e-9;
    double noise = 0;
    double snapIn = 0;       // how far ahead of the contact point the tip jumps to the surface
    double adhesion = 30e-9; // deflection at which it comes off
};

enum class Way
{
    Approach,
    Retract,
};

inline std::vector<double> Make(const CRecipe& recipe, Way way, CNoise& noise)
{
    std::vector<double> signal(recipe.points);
    const double reach = way == Way::Retract ? recipe.adhesion : recipe.snapIn * recipe.stiffness;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double z = recipe.start + static_cast<double>(i) * recipe.step;
        const double bent = recipe.stiffness * (z - recipe.contact);
        signal[i] = (bent >= -reach ? bent : 0) + recipe.offset + recipe.tilt * z;
        if (recipe.noise > 0)
            signal[i] += recipe.noise * noise.Normal();
    }
    return signal;
}

inline VELCurves BlockOf(const CRecipe& recipe, const std::vector<double>& signal)
{
    return {1, signal.size(), signal.size(), recipe.start, recipe.step, signal.data()};
}

inline VELCurveOptions Defaults()
{
    VELCurveOptions options;
    VELCurveDefaults(&options);
    options.sensitivity = 1;
    options.spring_constant = 0.2;
    return options;
}

// What the library says of one approach and one retract.
struct CResults
{
    VELSlope slope{};
    VELBaseline baseline{};
    VELContact contact{};
    VELAdhesion adhesion{};
    VELIndentation indentation{};
};

inline CResults Analyse(const VELCurves& approach, const VELCurves& retract, const VELCurveOptions& options)
{
    CResults results;
    VELCurveSlopes(&approach, &options, &results.slope);
    VELCurveBaselines(&approach, &options, &results.baseline);
    VELCurveContacts(&approach, &options, &results.contact);
    VELCurveAdhesions(&retract, &options, &results.adhesion);
    VELCurveIndentations(&approach, &options, &results.indentation, nullptr, approach.pitch);
    return results;
}

} // namespace recipe
