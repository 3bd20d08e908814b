// Compares the library with the hand-written baseline and with other libraries, on the same data, in one run.
#include "compare/Measure.h"
#include "compare/Report.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Options
{
    std::string benchmarks = ".";
    std::string folder;
    std::string json;
    std::string chart;
    int rounds = 7;
    bool quick = false;
    bool processorTime = false;
};

std::vector<bench::Benchmark> AllBenchmarks()
{
    std::vector<bench::Benchmark> benchmarks;
    for (const auto make : {bench::FileBenchmarks, bench::HeaderBenchmarks, bench::InspectBenchmarks,
                            bench::LineFileBenchmarks, bench::CallBenchmarks, bench::CurveBenchmarks})
        std::ranges::move(make(), std::back_inserter(benchmarks));
    return benchmarks;
}

std::vector<bench::Result> MeasureAll(const Options& options)
{
    const std::regex wanted(options.benchmarks);
    std::vector<bench::Result> results;
    bench::PrintHead();
    bool hasBefore = false;
    for (const bench::Benchmark& benchmark : AllBenchmarks()) {
        if (!std::regex_search(benchmark.name, wanted)) {
            hasBefore = false;
            continue;
        }
        bench::CScratch scratch(options.folder);
        const bench::Settings settings{options.processorTime ? bench::Clock::Processor : bench::Clock::Wall, &scratch,
                                       options.quick ? 64U : 1U};
        results.push_back(bench::Measure(benchmark, settings, options.quick ? 1 : options.rounds,
                                         hasBefore ? &results.back() : nullptr));
        bench::PrintRow(results.back());
        hasBefore = true;
    }
    if (results.empty())
        throw std::runtime_error("No benchmark has a name that matches " + options.benchmarks);
    return results;
}

void Run(const Options& options)
{
    const auto results = MeasureAll(options);
    if (!options.json.empty())
        bench::WriteJson(options.json, results, options.rounds);
    if (!options.chart.empty())
        bench::DrawChart(options.chart, results);
}

} // namespace

int main(int argc, char** argv)
try {
    CLI::App app("Compares the speed of VELOxd with that of a hand-written baseline and of other libraries.");
    Options options;
    app.add_option("--benchmarks,--works", options.benchmarks,
                   "run only benchmarks whose name matches this regular expression");
    app.add_option("--folder", options.folder, "where to put the files (default: the system's temporary folder)");
    app.add_option("--json", options.json, "write the results to this file");
    app.add_option("--chart", options.chart, "draw the results to this SVG file");
    app.add_option("--rounds", options.rounds, "how often to run each contender")->check(CLI::PositiveNumber);
    app.add_flag("--quick", options.quick,
                 "small data and one round, to see that everything works, not how fast it is");
    app.add_flag("--processor-time", options.processorTime, "measure processor time in place of elapsed time");
    CLI11_PARSE(app, argc, argv);
    Run(options);
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
