// Benchmarks of force curves: every curve of a file is read and analysed. They are compared with one pass over the same
// samples through the operator that subtracts a line and, beside it, the one that subtracts a polynomial.
#include "compare/Benchmark.h"
#include "support/Oxd.h"

#include <veloxd_curves.h>

#include <memory>
#include <random>
#include <vector>

namespace bench {

namespace {

constexpr Shape allCurves{512, 100'000, 16};
constexpr double step = 1e-9;
constexpr double signalRange = 400e-9;
constexpr std::int32_t rawData = 0;
constexpr std::int32_t lineFit = 2;
constexpr std::int32_t polynomialFit = 5;

// A retract in metres, which is one of an approach, too: a tilted baseline, and a tip that sticks.
std::vector<double> MakeCurve(std::mt19937& random)
{
    std::vector<double> curve(allCurves.points);
    std::normal_distribution<double> noise(0, 0.2e-9);
    const double contact = 350e-9 + 20 * noise(random);
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double z = static_cast<double>(i) * step;
        const double bent = 0.8 * (z - contact);
        curve[i] = (bent > -30e-9 ? bent : 0) + 0.005 * z + noise(random);
    }
    return curve;
}

// Saves the curves, of which a thousand differ, and opens them as users find them: as stored.
std::shared_ptr<COxd> OpenCurves(const Settings& settings, const Shape& shape)
{
    std::mt19937 random; // NOLINT(bugprone-random-generator-seed,cert-msc32-c): the same in each run
    std::vector<std::vector<double>> curves(1000);
    for (auto& curve : curves)
        curve = MakeCurve(random);
    const std::string path = settings.scratch->Path("curves.oxd");
    COxd file = COxd::CreateImage(path, shape);
    SetChannelData_SignalAxisMin(*file, 0, 0, -signalRange / 2);
    SetChannelData_SignalAxisRange(*file, 0, 0, signalRange);
    for (std::uint64_t i = 0; i < shape.lines; ++i)
        SetChannelData_LineReal(*file, 0, 0, i, curves[i % curves.size()].data());
    file.SaveAs(path);
    file.Close();
    CheckLibrary();
    return std::make_shared<COxd>(COxd::Open(path));
}

// Reads every line through an operator, and calls use(line).
template <class Use>
void EachLine(const COxd& file, const Shape& shape, std::int32_t lineOp, Use use)
{
    std::vector<double> line(shape.points);
    for (std::uint64_t i = 0; i < shape.lines; ++i) {
        GetChannelData_LineReal(*file, 0, 0, i, lineOp, line.data());
        use(line);
    }
}

VELCurveOptions Options()
{
    VELCurveOptions options;
    VELCurveDefaults(&options);
    options.surface = VEL_SURFACE_AT_HIGH_POSITIONS;
    options.signal_step = signalRange / 65535;
    options.sensitivity = 1;
    options.spring_constant = 0.2;
    return options;
}

// The checksum of each contender is the number of its curves, of those that have a value.
template <class Result, class Analyse>
auto Curves(Analyse analyse)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(allCurves, settings);
        const auto file = OpenCurves(settings, shape);
        const auto count = std::make_shared<double>();
        const auto run = [=](std::int32_t lineOp, auto use) {
            return [=] {
                *count = 0;
                EachLine(*file, shape, lineOp, use);
            };
        };
        const auto finish = [=] { return *count; };
        const auto pass = [=](const std::vector<double>& /*line*/) { *count += 1; };
        const auto analysed = [=, options = Options()](const std::vector<double>& line) {
            const VELCurves curve{1, line.size(), line.size(), 0, step, line.data()};
            Result result;
            analyse(&curve, &options, &result);
            *count += result.reason == VEL_CURVE_OK ? 1 : 0;
        };
        return std::vector<Contender>{{ours, run(rawData, analysed), finish},
                                      {baselineName, run(lineFit, pass), finish},
                                      {"polynomial", run(polynomialFit, pass), finish},
                                      {"reading alone", run(rawData, pass), finish}};
    };
}

void Indentations(const VELCurves* curves, const VELCurveOptions* options, VELIndentation* results)
{
    static std::vector<double> indentations(allCurves.points);
    VELCurveIndentations(curves, options, results, indentations.data(), allCurves.points);
}

} // namespace

std::vector<Benchmark> CurveBenchmarks()
{
    constexpr double perPass = milliseconds;
    const std::vector<Goal> goals{{Against::Baseline, 1.5}};
    return {
        {"slope of 100 000 curves", "ms", perPass, goals, Curves<VELSlope>(VELCurveSlopes)},
        {"adhesion of 100 000 curves", "ms", perPass, goals, Curves<VELAdhesion>(VELCurveAdhesions)},
        {"indentation of 100 000 curves", "ms", perPass, goals, Curves<VELIndentation>(Indentations)},
    };
}

} // namespace bench
