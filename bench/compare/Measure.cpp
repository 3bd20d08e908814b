#include "compare/Measure.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <stdexcept>

namespace bench {

namespace {

double Seconds(Clock clock)
{
    timespec now{};
    clock_gettime(clock == Clock::Wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double SecondsOf(const std::function<void()>& run, Clock clock)
{
    const double start = Seconds(clock);
    run();
    return Seconds(clock) - start;
}

class CRunner
{
public:
    CRunner(const Benchmark& benchmark, const Contender& contender) : m_benchmark(benchmark), m_contender(contender) {}

    void Run(Clock clock)
    {
        m_contender.prepare();
        const double seconds = SecondsOf(m_contender.run, clock);
        m_values.push_back(m_contender.figure ? m_contender.figure() : seconds * m_benchmark.unitsPerSecond);
        m_checksum = m_contender.finish();
    }

    double Checksum() const { return m_checksum; }
    const std::string& Name() const { return m_contender.name; }

    Figure Summary()
    {
        std::ranges::sort(m_values);
        return {m_contender.name, m_values[m_values.size() / 2], m_values.front(), m_values.back()};
    }

private:
    const Benchmark& m_benchmark;
    const Contender& m_contender;
    std::vector<double> m_values;
    double m_checksum = 0;
};

void CheckSums(const Benchmark& benchmark, const std::vector<CRunner>& runners)
{
    const double expected = runners.front().Checksum();
    for (const CRunner& runner : runners) {
        if (!(std::abs(runner.Checksum() - expected) <= benchmark.tolerance * std::abs(expected)))
            throw std::runtime_error(benchmark.name + ": " + runner.Name() + " gives " +
                                     std::to_string(runner.Checksum()) + " instead of " + std::to_string(expected));
    }
}

double Compared(const Result& result, Against against, const Result* before)
{
    switch (against) {
    case Against::Baseline:
        return result.Ours() / result.Baseline().value_or(NAN);
    case Against::BestPeer:
        return result.BestPeer() ? result.Ours() / result.BestPeer()->median : NAN;
    case Against::Figure:
        return result.Ours();
    case Against::Growth:
        return before ? result.Ours() / before->Ours() : NAN;
    }
    return NAN;
}

} // namespace

std::optional<double> Result::Baseline() const
{
    const auto found = std::ranges::find(figures, baselineName, &Figure::name);
    return found == figures.end() ? std::nullopt : std::optional(found->median);
}

const Figure* Result::BestPeer() const
{
    const Figure* best = nullptr;
    for (const Figure& figure : figures) {
        const bool isPeer = figure.name != ours && figure.name != baselineName;
        if (isPeer && (!best || figure.median < best->median))
            best = &figure;
    }
    return best;
}

Result Measure(const Benchmark& benchmark, const Settings& settings, int rounds, const Result* before)
{
    const std::vector<Contender> contenders = benchmark.contenders(settings);
    std::vector<CRunner> runners;
    runners.reserve(contenders.size());
    for (const Contender& contender : contenders)
        runners.emplace_back(benchmark, contender);
    for (int round = 0; round < rounds; ++round) {
        for (CRunner& runner : runners)
            runner.Run(settings.clock);
        CheckSums(benchmark, runners);
    }
    Result result{benchmark.name, benchmark.unit, {}, {}};
    for (CRunner& runner : runners)
        result.figures.push_back(runner.Summary());
    for (const Goal& goal : benchmark.goals) {
        if (const double value = Compared(result, goal.against, before); !std::isnan(value))
            result.verdicts.push_back({goal, value});
    }
    return result;
}

} // namespace bench
