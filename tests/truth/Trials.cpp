#include "truth/Trials.h"

namespace truth {

namespace {

using recipe::CNoise;
using recipe::CRecipe;
using recipe::Way;

constexpr std::array<std::size_t, 4> samplings{128, 256, 512, 1024};
constexpr std::array<double, 3> tilts{0, 0.005, -0.02};
constexpr std::array<double, 2> snapIns{0, 8e-9};

CRecipe Draw(std::size_t number, double ratio, CNoise& noise)
{
    CRecipe recipe;
    recipe.points = samplings[number % samplings.size()];
    recipe.step = way / static_cast<double>(recipe.points - 1);
    recipe.tilt = tilts[number / samplings.size() % tilts.size()];
    recipe.snapIn = snapIns[number / (samplings.size() * tilts.size()) % snapIns.size()];
    recipe.contact = noise.Uniform(0.6, 0.75) * way;
    recipe.stiffness = noise.Uniform(0.5, 1);
    recipe.adhesion = noise.Uniform(20e-9, 60e-9);
    recipe.offset = noise.Uniform(-20e-9, 20e-9);
    recipe.noise = recipe.stiffness * (way - recipe.contact) / ratio;
    return recipe;
}

template <class Result>
CDeviation Deviation(Quantity quantity, const Result& result, double value, double truth)
{
    const double units = quantities[quantity].unitsPerValue;
    return {result.reason == VEL_CURVE_OK, units * (value - truth), units * result.error};
}

// The slope is looked for behind the contact point, and its deviation is relative.
CTrial Run(double ratio, const CRecipe& recipe, CNoise& noise)
{
    const auto approach = Make(recipe, Way::Approach, noise);
    const auto retract = Make(recipe, Way::Retract, noise);
    VELCurveOptions options = recipe::Defaults();
    options.slope_from = recipe.contact + 0.02 * way;
    options.slope_to = way;
    const auto found = recipe::Analyse(BlockOf(recipe, approach), BlockOf(recipe, retract), options);
    CTrial trial{ratio, recipe, {}};
    const double slope = recipe.stiffness + recipe.tilt;
    trial.deviations[Slope] = Deviation(Slope, found.slope, found.slope.slope / slope, 1);
    trial.deviations[Slope].stated /= slope;
    trial.deviations[Contact] = Deviation(Contact, found.contact, found.contact.position, recipe.contact);
    trial.deviations[Adhesion] = Deviation(Adhesion, found.adhesion, found.adhesion.signal, recipe.adhesion);
    trial.deviations[Indentation] = Deviation(Indentation, found.indentation, found.indentation.largest,
                                              (1 - recipe.stiffness) * (way - recipe.contact));
    return trial;
}

} // namespace

std::vector<CTrial> RunTrials()
{
    CNoise noise(2026);
    std::vector<CTrial> trials;
    for (std::size_t i = 0; i < curveCount; ++i) {
        const double ratio = signalToNoise[i * signalToNoise.size() / curveCount];
        const CRecipe recipe = Draw(i, ratio, noise);
        trials.push_back(Run(ratio, recipe, noise));
    }
    return trials;
}

} // namespace truth
