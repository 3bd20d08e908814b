// Compares the library with hand-written code and with other libraries, on the same data, in one run.
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
    std::string works = ".";
    std::string folder;
    std::string json;
    std::string chart;
    int rounds = 7;
    bool quick = false;
    bool processorTime = false;
};

std::vector<bench::Work> AllWorks()
{
    std::vector<bench::Work> works;
    for (const auto make : {bench::FileWorks, bench::HeaderWorks, bench::LineFileWorks, bench::LineWorks})
        std::ranges::move(make(), std::back_inserter(works));
    return works;
}

std::vector<bench::Result> MeasureAll(const Options& options)
{
    const std::regex wanted(options.works);
    std::vector<bench::Result> results;
    bench::PrintHead();
    bool hasBefore = false;
    for (const bench::Work& work : AllWorks()) {
        if (!std::regex_search(work.name, wanted)) {
            hasBefore = false;
            continue;
        }
        bench::CScratch scratch(options.folder);
        const bench::Settings settings{options.processorTime ? bench::Clock::Processor : bench::Clock::Wall, &scratch,
                                       options.quick ? 64U : 1U};
        results.push_back(
            bench::Measure(work, settings, options.quick ? 1 : options.rounds, hasBefore ? &results.back() : nullptr));
        bench::PrintRow(results.back());
        hasBefore = true;
    }
    return results;
}

void Run(const Options& options)
{
    const auto results = MeasureAll(options);
    if (results.empty())
        throw std::invalid_argument("--works: no name matches " + options.works);
    if (!options.json.empty())
        bench::WriteJson(options.json, results, options.rounds);
    if (!options.chart.empty())
        bench::DrawChart(options.chart, results);
}

} // namespace

int main(int argc, char** argv)
try {
    CLI::App app("Compares the speed of VELOxd with that of hand-written code and of other libraries.");
    Options options;
    app.add_option("--works", options.works, "only works whose name matches this expression");
    app.add_option("--folder", options.folder, "where to put files (default: the system's temporary folder)");
    app.add_option("--json", options.json, "write the results to this file");
    app.add_option("--chart", options.chart, "draw them to this SVG file");
    app.add_option("--rounds", options.rounds, "how often each contender runs")->check(CLI::PositiveNumber);
    app.add_flag("--quick", options.quick, "small data, one round: shows that everything works, not how fast it is");
    app.add_flag("--processor-time", options.processorTime, "time what the processor does, not what the clock says");
    CLI11_PARSE(app, argc, argv);
    Run(options);
    return 0;
} catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
