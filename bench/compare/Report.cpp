#include "compare/Report.h"

#include "compare/Peers.h"

#include <nlohmann/json.hpp>
#include <sys/utsname.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace bench {

namespace {

const char* NameOf(Against against)
{
    switch (against) {
    case Against::Baseline:
        return "baseline";
    case Against::BestPeer:
        return "best peer";
    case Against::Figure:
        return "figure";
    case Against::Growth:
        return "growth";
    }
    return "";
}

std::string Processor()
{
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);) {
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    }
    return "unknown";
}

nlohmann::json Machine()
{
    utsname system{};
    uname(&system);
    return {{"processor", Processor()},
            {"system", std::string(system.sysname) + " " + system.release + " " + system.machine},
            {"compiler", BENCH_COMPILER}};
}

nlohmann::json ToJson(const Result& result)
{
    nlohmann::json json{{"benchmark", result.benchmark}, {"unit", result.unit}};
    for (const Figure& figure : result.figures)
        json["figures"].push_back(
            {{"name", figure.name}, {"median", figure.median}, {"lowest", figure.lowest}, {"highest", figure.highest}});
    for (const Verdict& verdict : result.verdicts)
        json["goals"].push_back({{"against", NameOf(verdict.goal.against)},
                                 {"atMost", verdict.goal.atMost},
                                 {"value", verdict.value},
                                 {"met", verdict.Met()}});
    return json;
}

} // namespace

void PrintHead()
{
    for (const std::string& name : MissingPeers())
        std::printf("%s is not installed and not compared with.\n", name.c_str());
    std::printf("%-34s %13s %8s  %s\n", "benchmark", "median", "spread", "others; goals");
}

void PrintRow(const Result& result)
{
    const Figure& our = result.figures.front();
    std::printf("%-34s %10.4g %s %+5.0f%%  ", result.benchmark.c_str(), our.median, result.unit.c_str(),
                100 * (our.highest - our.lowest) / our.median);
    for (std::size_t i = 1; i < result.figures.size(); ++i)
        std::printf("%s %.4g (x%.2f) ", result.figures[i].name.c_str(), result.figures[i].median,
                    our.median / result.figures[i].median);
    for (const Verdict& verdict : result.verdicts)
        std::printf("; %s %.3g, at most %.3g: %s", NameOf(verdict.goal.against), verdict.value, verdict.goal.atMost,
                    verdict.Met() ? "met" : "MISSED");
    std::printf("\n");
    std::fflush(stdout);
}

void WriteJson(const std::string& path, const std::vector<Result>& results, int rounds)
{
    nlohmann::json json{{"machine", Machine()}, {"rounds", rounds}, {"missing", MissingPeers()}};
    for (const Result& result : results)
        json["benchmarks"].push_back(ToJson(result));
    std::ofstream stream(path);
    stream << json.dump(2) << "\n";
    if (!stream.flush())
        throw std::runtime_error("Cannot write " + path);
}

} // namespace bench
