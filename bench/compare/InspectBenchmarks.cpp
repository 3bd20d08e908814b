// Benchmarks of what reads the header of a large file and leaves its samples alone: the inspection, and the tool as its
// users start it.
#include "compare/Baseline.h"
#include "compare/Benchmark.h"
#include "compare/Memory.h"
#include "support/Oxd.h"

#include "inspect/Inspection.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace bench {

namespace {

constexpr Shape gibibyteImage{16'384, 16'384, 16};
constexpr std::uint64_t largeChannels = 2;
constexpr std::uint64_t infoItems = 60;

double Nothing()
{
    return 0;
}

void WriteHeaderOf(const std::string& path, const Shape& shape)
{
    std::ofstream stream(path, std::ios::binary);
    stream << HeaderOf(shape, largeChannels, infoItems);
    if (!stream.flush())
        throw std::runtime_error("Cannot write " + path);
}

// Samples that were never written take no room on the disk; nobody reads them.
std::string MakeLargeFile(const Settings& settings, const Shape& shape)
{
    std::string path = settings.scratch->Path("large.oxd");
    WriteHeaderOf(path, shape);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + largeChannels * shape.Bytes());
    return path;
}

auto Inspect(Shape fullShape)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = MakeLargeFile(settings, shape);
        const std::string header = settings.scratch->Path("header.oxd");
        WriteHeaderOf(header, shape);
        return std::vector<Contender>{{ours, [=] { veltaris::inspect::Inspect(path); }, Nothing},
                                      {baselineName, [=] { baseline::ReadHeader(header); }, Nothing}};
    };
}

auto InspectMemory(Shape fullShape)
{
    return [=](const Settings& settings) {
        const std::string path = MakeLargeFile(settings, Smaller(fullShape, settings));
        const auto bytes = std::make_shared<std::uint64_t>();
        const auto inspect = [=] {
            *bytes = MemoryTakenBy([&] {
                static const auto inspection = veltaris::inspect::Inspect(path); // kept while it is measured
                return inspection.Opens();
            });
        };
        constexpr double megabyte = 1e6;
        return std::vector<Contender>{
            {ours, inspect, Nothing, [] {}, [=] { return static_cast<double>(*bytes) / megabyte; }}};
    };
}

// Runs the tool, whose results go nowhere.
void RunTool(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failure = posix_spawn(&process, BENCH_TOOL, &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    if (failure != 0 || waitpid(process, &status, 0) != process || status != 0)
        throw std::runtime_error("oxd " + words[1] + " failed");
}

auto Tool(Shape fullShape, const std::vector<std::string>& arguments)
{
    return [=](const Settings& settings) {
        std::vector<std::string> words{"oxd", arguments[0], MakeLargeFile(settings, Smaller(fullShape, settings))};
        words.insert(words.end(), arguments.begin() + 1, arguments.end());
        return std::vector<Contender>{{ours, [=] { RunTool(words); }, Nothing},
                                      {"--version",
                                       [] {
                                           RunTool({"oxd", "--version"});
                                       },
                                       Nothing}};
    };
}

} // namespace

std::vector<Benchmark> InspectBenchmarks()
{
    constexpr double microseconds = 1e6;
    using enum Against;
    return {
        {"inspect 1 GiB", "us", microseconds, {}, Inspect(gibibyteImage)},
        {"memory to inspect 1 GiB", "MB", 1, {{Figure, 20}}, InspectMemory(gibibyteImage)},
        {"oxd info of 1 GiB", "ms", milliseconds, {{Figure, 20}}, Tool(gibibyteImage, {"info", "--json"})},
        {"oxd get of 1 GiB", "ms", milliseconds, {{Figure, 20}}, Tool(gibibyteImage, {"get", "Group 0/Setting 0"})},
        {"oxd validate of 1 GiB", "ms", milliseconds, {{Figure, 20}}, Tool(gibibyteImage, {"validate"})},
    };
}

} // namespace bench
