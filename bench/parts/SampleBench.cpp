// Microbenchmarks of lines and pixels of an open channel.
#include "support/Oxd.h"
#include "support/Scratch.h"

#include <benchmark/benchmark.h>

namespace {

using bench::COxd;
using bench::Shape;

constexpr std::int64_t points = 1024;
constexpr std::uint64_t lines = 256;

COxd OpenImage(std::int64_t bits)
{
    const bench::CScratch scratch;
    const Shape shape{points, lines, static_cast<int>(bits)};
    bench::WriteOxd(scratch.Path("image.oxd"), shape);
    return COxd::Open(scratch.Path("image.oxd"));
}

// Counts from 0 to `count` - 1 over and over.
class CNext
{
public:
    explicit CNext(std::uint64_t count) : m_count(count) {}
    std::uint64_t operator()() { return m_next = m_next + 1 < m_count ? m_next + 1 : 0; }

private:
    std::uint64_t m_count;
    std::uint64_t m_next = 0;
};

void ReadLineRaw(benchmark::State& state)
{
    const COxd file = OpenImage(state.range(0));
    std::vector<std::int32_t> samples(points);
    CNext line(lines);
    for ([[maybe_unused]] auto _ : state)
        GetChannelData_LineRaw(*file, 0, 0, line(), static_cast<std::int32_t>(state.range(1)), samples.data());
    state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(ReadLineRaw)->ArgNames({"bits", "op"})->ArgsProduct({{8, 16, 32}, {0}})->ArgsProduct({{16}, {1, 2, 3, 4, 5}});

void ReadLineReal(benchmark::State& state)
{
    const COxd file = OpenImage(state.range(0));
    std::vector<double> values(points);
    CNext line(lines);
    for ([[maybe_unused]] auto _ : state)
        GetChannelData_LineReal(*file, 0, 0, line(), 0, values.data());
    state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(ReadLineReal)->ArgName("bits")->Arg(8)->Arg(16)->Arg(32);

void WriteLineRaw(benchmark::State& state)
{
    const COxd file = OpenImage(state.range(0));
    const Shape shape{points, lines, static_cast<int>(state.range(0))};
    CNext line(lines);
    for ([[maybe_unused]] auto _ : state) {
        const std::uint64_t i = line();
        SetChannelData_LineRaw(*file, 0, 0, i, bench::RawLine(shape, i).data());
    }
    state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(WriteLineRaw)->ArgName("bits")->Arg(8)->Arg(16)->Arg(32);

void WriteLineReal(benchmark::State& state)
{
    const COxd file = OpenImage(state.range(0));
    const Shape shape{points, lines, static_cast<int>(state.range(0))};
    CNext line(lines);
    for ([[maybe_unused]] auto _ : state) {
        const std::uint64_t i = line();
        SetChannelData_LineReal(*file, 0, 0, i, bench::RealLine(shape, i).data());
    }
    state.SetItemsProcessed(state.iterations() * points);
}
BENCHMARK(WriteLineReal)->ArgName("bits")->Arg(8)->Arg(16)->Arg(32);

void ReadPixel(benchmark::State& state)
{
    const COxd file = OpenImage(16);
    CNext point(points);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(
            GetChannelData_PixelRaw(*file, 0, 0, point(), 7, static_cast<std::int32_t>(state.range(0))));
}
BENCHMARK(ReadPixel)->ArgName("op")->Arg(0)->Arg(2);

void WritePixel(benchmark::State& state)
{
    const COxd file = OpenImage(16);
    CNext point(points);
    for ([[maybe_unused]] auto _ : state)
        SetChannelData_PixelRaw(*file, 0, 0, point(), 7, 1 << 20);
}
BENCHMARK(WritePixel);

} // namespace
