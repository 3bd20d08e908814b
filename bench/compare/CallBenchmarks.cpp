// Benchmarks of single calls: lines with operators, pixels, and steps through the information tree.
#include "compare/Baseline.h"
#include "compare/Benchmark.h"
#include "compare/Peers.h"
#include "support/Oxd.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace bench {

namespace {

constexpr Shape image{1024, 1024, 16};
constexpr Shape largeImage{8192, 8192, 16};
constexpr double nanoseconds = 1e9;

std::shared_ptr<COxd> OpenImage(const Settings& settings, const Shape& shape)
{
    const std::string path = settings.scratch->Path("pixels.oxd");
    WriteOxd(path, shape);
    return std::make_shared<COxd>(COxd::Open(path));
}

using Lines = std::shared_ptr<std::vector<std::int32_t>>;

Lines MakeLines()
{
    return std::make_shared<std::vector<std::int32_t>>(image.Samples());
}

// A checksum of corrected lines that rounding hardly changes.
double MeanMagnitude(const std::vector<std::int32_t>& samples)
{
    double sum = 0;
    for (const std::int32_t sample : samples)
        sum += std::abs(static_cast<double>(sample));
    return sum / static_cast<double>(samples.size());
}

// Calls apply(line, corrected) for each line of the image.
template <class Apply>
Contender Correct(const std::string& name, const Lines& corrected, Apply apply)
{
    return {name,
            [=] {
                for (std::uint64_t i = 0; i < image.lines; ++i)
                    apply(i, std::span(*corrected).subspan(i * image.points, image.points));
            },
            [=] { return MeanMagnitude(*corrected); }};
}

// `degree` is that of the polynomial that the operator fits, if peers can fit it as well.
auto Operator(int code, std::optional<int> degree = {})
{
    return [=](const Settings& settings) {
        const auto file = OpenImage(settings, image);
        const Lines corrected = MakeLines();
        const auto baselineOperator = std::make_shared<baseline::COperator>(code, image.points);
        std::vector<Contender> contenders{
            Correct(ours, corrected,
                    [=](std::uint64_t i, auto out) { GetChannelData_LineRaw(**file, 0, 0, i, code, out.data()); }),
            Correct(baselineName, corrected,
                    [=](std::uint64_t i, auto out) { baselineOperator->Apply(RawLine(image, i), out); })};
        if (degree) {
            for (const auto& peer : FitPeers(*degree, image.points))
                contenders.push_back(Correct(peer->Name(), corrected,
                                             [=](std::uint64_t i, auto out) { peer->Apply(RawLine(image, i), out); }));
        }
        return contenders;
    };
}

struct Position
{
    std::uint64_t point;
    std::uint64_t line;
};

constexpr std::size_t pixelCount = 1'000'000;

std::vector<Position> InOrder()
{
    std::vector<Position> positions(pixelCount);
    for (std::size_t i = 0; i < pixelCount; ++i)
        positions[i] = {i % image.points, i / image.points};
    return positions;
}

std::vector<Position> Scattered()
{
    std::mt19937_64 random; // NOLINT(bugprone-random-generator-seed,cert-msc32-c): the same in each run
    std::vector<Position> positions(pixelCount);
    for (Position& position : positions)
        position = {random() % largeImage.points, random() % largeImage.lines};
    return positions;
}

// A second thread that only waits: with one, locks and shared pointers cost more.
std::shared_ptr<void> IdleThread()
{
    return std::make_shared<std::jthread>([](const std::stop_token& stop) {
        while (!stop.stop_requested())
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    });
}

// use(file, position) returns a sample.
template <class Use>
auto Pixels(const Shape& shape, std::vector<Position> (*order)(), Use use)
{
    return [=](const Settings& settings) {
        const auto file = OpenImage(settings, shape);
        const auto sum = std::make_shared<double>();
        const auto walk = [=, positions = order(), idle = IdleThread()] {
            std::int64_t total = 0;
            for (const Position& position : positions)
                total += use(**file, position);
            *sum = static_cast<double>(total);
        };
        return std::vector<Contender>{{ours, walk, [=] {
                                           CheckLibrary();
                                           return *sum;
                                       }}};
    };
}

std::int32_t GetPixel(std::uint64_t file, const Position& at)
{
    return GetChannelData_PixelRaw(file, 0, 0, at.point, at.line, 0);
}

std::int32_t GetCorrectedPixel(std::uint64_t file, const Position& at)
{
    return GetChannelData_PixelRaw(file, 0, 0, at.point, at.line, 2);
}

std::int32_t SetPixel(std::uint64_t file, const Position& at)
{
    SetChannelData_PixelRaw(file, 0, 0, at.point, at.line, 1 << 20);
    return 1 << 20;
}

constexpr std::uint64_t steps = 1'000'000;

// Walks along this number of sibling groups, again and again.
auto NextSibling(std::uint64_t siblings)
{
    return [=](const Settings& settings) {
        const auto file = std::make_shared<COxd>(COxd::Create(settings.scratch->Path("unsaved.oxd")));
        for (std::uint64_t i = 0; i < siblings; ++i)
            AddMetaInfoItemGroup(**file, 1, std::to_string(i).c_str());
        const auto walk = [=] {
            for (std::uint64_t done = 0; done < steps; done += siblings) {
                auto node = SelectFirstChildMetaInfoItem(**file, 1);
                for (std::uint64_t i = 1; i < siblings; ++i)
                    node = SelectNextMetaInfoItem(**file, node);
            }
        };
        return std::vector<Contender>{{ours, walk, [] {
                                           CheckLibrary();
                                           return 0.0;
                                       }}};
    };
}

constexpr std::uint64_t treeGroups = 4000;
constexpr std::uint64_t treeNodes = treeGroups * 5;

// Until there is no next one, as programs do that know nothing of the tree.
std::uint64_t CountBelow(std::uint64_t file, std::uint64_t group) // NOLINT(misc-no-recursion): two levels
{
    std::uint64_t count = 0;
    for (auto node = SelectFirstChildMetaInfoItem(file, group); node != 0; node = SelectNextMetaInfoItem(file, node))
        count += IsMetaInfoItemAGroup(file, node) ? 1 + CountBelow(file, node) : 1;
    VELGetLastError();
    return count;
}

// Walks through a whole tree of groups with four items each.
std::vector<Contender> WholeTree(const Settings& settings)
{
    const auto file = std::make_shared<COxd>(COxd::Create(settings.scratch->Path("unsaved.oxd")));
    for (std::uint64_t i = 0; i < treeGroups; ++i) {
        const auto group = AddMetaInfoItemGroup(**file, 1, std::to_string(i).c_str());
        for (const char* name : {"a", "b", "c", "d"})
            AddMetaInfoItem(**file, group, name, "value");
    }
    const auto count = std::make_shared<std::uint64_t>();
    return {{ours, [=] { *count = CountBelow(**file, 1); },
             [=] {
                 CheckLibrary();
                 return static_cast<double>(*count);
             }}};
}

// Opens the file and reads all lines minus a straight one. Nothing asks for the error, which is one for all threads.
double ReadFile(const std::string& path)
{
    const std::uint64_t file = OpenOxdFile(path.c_str());
    std::vector<std::int32_t> line(image.points);
    double sum = 0;
    for (std::uint64_t i = 0; i < image.lines; ++i) {
        GetChannelData_LineRaw(file, 0, 0, i, 2, line.data());
        sum += line.front();
    }
    CloseOxdFile(file);
    return sum;
}

// The time of two threads with a file each, relative to that of one thread with its file.
std::vector<Contender> TwoThreads(const Settings& settings)
{
    constexpr int rounds = 20;
    const std::array paths{settings.scratch->Path("first.oxd"), settings.scratch->Path("second.oxd")};
    for (const auto& path : paths)
        WriteOxd(path, image);
    const auto sum = std::make_shared<double>();
    const auto secondsOf = [=](std::size_t threads) {
        const auto start = std::chrono::steady_clock::now();
        {
            std::vector<std::jthread> others;
            const auto read = [&](const std::string& path) {
                double total = 0;
                for (int round = 0; round < rounds; ++round)
                    total += ReadFile(path);
                return total;
            };
            for (std::size_t i = 1; i < threads; ++i)
                others.emplace_back([&, i] { read(paths[i]); });
            *sum = read(paths[0]);
        }
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    return {{ours, [] {}, [=] { return *sum; }, [] {}, [=] { return secondsOf(2) / secondsOf(1); }}};
}

// Creates this number of items in a group, and finds each by its name.
auto CreateItems(std::uint64_t items)
{
    return [=](const Settings& settings) {
        const std::string path = settings.scratch->Path("unsaved.oxd");
        const auto create = [=] {
            const COxd file = COxd::Create(path);
            CreateInfoGroup(*file);
            for (std::uint64_t i = 0; i < items; ++i)
                CreateInfoItem(*file, 0, std::to_string(i).c_str(), "value");
            for (std::uint64_t i = 0; i < items; ++i)
                GetInfoItemIndex(*file, 0, std::to_string(i).c_str());
        };
        return std::vector<Contender>{{ours, create, [] {
                                           CheckLibrary();
                                           return 0.0;
                                       }}};
    };
}

} // namespace

std::vector<Benchmark> CallBenchmarks()
{
    constexpr double perLine = 1e6 / image.lines;
    constexpr double perPixel = nanoseconds / pixelCount;
    constexpr double perStep = nanoseconds / steps;
    using enum Against;
    return {
        {"pixels in order, read", "ns", perPixel, {{Figure, 12}}, Pixels(image, InOrder, GetPixel)},
        {"pixels in order, written", "ns", perPixel, {{Figure, 15}}, Pixels(image, InOrder, SetPixel)},
        {"pixels scattered, read", "ns", perPixel, {{Figure, 45}}, Pixels(largeImage, Scattered, GetPixel)},
        {"pixels scattered, written", "ns", perPixel, {{Figure, 55}}, Pixels(largeImage, Scattered, SetPixel)},
        {"pixels of lines minus a line", "ns", perPixel, {{Figure, 35}}, Pixels(image, InOrder, GetCorrectedPixel)},
        {"mean of 1 024 points", "us", perLine, {{Baseline, 1.3}}, Operator(1, 0), 1e-4},
        {"line of 1 024 points", "us", perLine, {{Baseline, 1.3}, {BestPeer, 1.0}}, Operator(2, 1), 1e-4},
        {"parabola of 1 024 points", "us", perLine, {{Baseline, 1.3}, {BestPeer, 1.0}}, Operator(4, 2), 1e-4},
        {"polynomial of 1 024 points", "us", perLine, {{Baseline, 1.3}, {BestPeer, 1.0}}, Operator(5, 4), 1e-4},
        {"derivative of 1 024 points", "us", perLine, {{Baseline, 1.3}}, Operator(3), 1e-4},
        {"next of 1 000 siblings", "ns", perStep, {{Figure, 40}}, NextSibling(1000)},
        {"next of 16 000 siblings", "ns", perStep, {{Figure, 40}, {Growth, 1.6}}, NextSibling(16'000)},
        {"node of a whole tree", "ns", nanoseconds / treeNodes, {{Figure, 60}}, WholeTree},
        {"two threads, a file each", "times", 1, {{Figure, 1.11}}, TwoThreads},
        {"create and find 1 000 items", "ns", nanoseconds / 1000, {}, CreateItems(1000)},
        {"create and find 50 000 items", "ns", nanoseconds / 50'000, {{Growth, 2}}, CreateItems(50'000)},
    };
}

} // namespace bench
