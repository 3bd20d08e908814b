// Benchmarks of reading and writing headers with many channels.
#include "compare/Baseline.h"
#include "compare/Benchmark.h"
#include "support/Oxd.h"

#include <filesystem>
#include <memory>

namespace bench {

namespace {

// Each run repeats its operation until it has processed this number of channels.
constexpr std::uint64_t headerChannels = 64'000;

std::function<void()> RepeatedFor(std::uint64_t channels, const std::function<void()>& run)
{
    return [=, runs = headerChannels / channels] {
        for (std::uint64_t i = 0; i < runs; ++i)
            run();
    };
}

constexpr Shape noSamples{0, 0, 16};

auto ReadHeader(std::uint64_t channels)
{
    return [=](const Settings& settings) {
        const std::string path = settings.scratch->Path("header.oxd");
        WriteOxd(path, noSamples, channels);
        const auto nothing = [] { return 0.0; };
        return std::vector<Contender>{
            {ours, RepeatedFor(channels, [=] { COxd::Open(path); }), nothing},
            {baselineName, RepeatedFor(channels, [=] { baseline::ReadHeader(path); }), nothing},
            {"index alone", RepeatedFor(channels, [=] { baseline::IndexHeader(path); }), nothing}};
    };
}

auto WriteHeader(std::uint64_t channels)
{
    return [=](const Settings& settings) {
        const std::string path = settings.scratch->Path("header.oxd");
        const std::string saved = path + ".saved";
        WriteOxd(path, noSamples, channels);
        const auto file = std::make_shared<COxd>(COxd::Open(path));
        const auto length = [=] { return static_cast<double>(std::filesystem::file_size(saved)); };
        return std::vector<Contender>{
            {ours, RepeatedFor(channels, [=] { file->SaveAs(saved); }), length},
            {baselineName, RepeatedFor(channels, [=] { baseline::WriteHeader(saved, noSamples, channels); }), length}};
    };
}

} // namespace

std::vector<Benchmark> HeaderBenchmarks()
{
    const auto perChannel = 1e6 / headerChannels;
    using enum Against;
    return {
        {"read header of 1 000 channels", "us/channel", perChannel, {{Baseline, 1.6}, {Figure, 3.0}}, ReadHeader(1000)},
        {"read header of 64 000 channels",
         "us/channel",
         perChannel,
         {{Baseline, 1.6}, {Figure, 3.0}, {Growth, 1.6}},
         ReadHeader(64'000)},
        {"write header of 1 000 channels",
         "us/channel",
         perChannel,
         {{Baseline, 1.6}, {Figure, 3.0}},
         WriteHeader(1000),
         0.1},
        {"write header of 64 000 channels",
         "us/channel",
         perChannel,
         {{Baseline, 1.6}, {Figure, 3.0}, {Growth, 1.6}},
         WriteHeader(64'000),
         0.1},
    };
}

} // namespace bench
