// Microbenchmarks of opening and saving: headers, and samples of each width.
#include "support/Oxd.h"
#include "support/Scratch.h"

#include <benchmark/benchmark.h>

namespace {

using bench::COxd;
using bench::Shape;

// The file of one benchmark.
class CFile
{
public:
    CFile(const Shape& shape, std::uint64_t channels, std::uint64_t infoItems = 0)
    {
        bench::WriteOxd(Path(), shape, channels, infoItems);
    }
    std::string Path() const { return m_scratch.Path("bench.oxd"); }

private:
    bench::CScratch m_scratch;
};

Shape ImageOf(std::int64_t bits)
{
    return {2048, 2048, static_cast<int>(bits)};
}

void OpenHeader(benchmark::State& state)
{
    const CFile file({0, 0, 16}, static_cast<std::uint64_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        COxd::Open(file.Path());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(OpenHeader)->Arg(1)->Arg(1000)->Arg(64'000);

void SaveHeader(benchmark::State& state)
{
    const CFile file({0, 0, 16}, static_cast<std::uint64_t>(state.range(0)));
    const COxd opened = COxd::Open(file.Path());
    for ([[maybe_unused]] auto _ : state)
        opened.SaveAs(file.Path());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SaveHeader)->Arg(1)->Arg(1000)->Arg(64'000);

void OpenSmallFile(benchmark::State& state)
{
    const CFile file({256, 256, 16}, 8, 60);
    for ([[maybe_unused]] auto _ : state)
        COxd::Open(file.Path());
}
BENCHMARK(OpenSmallFile);

void OpenSamples(benchmark::State& state)
{
    const Shape shape = ImageOf(state.range(0));
    const CFile file(shape, 1);
    for ([[maybe_unused]] auto _ : state)
        COxd::Open(file.Path());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(shape.Bytes()));
}
BENCHMARK(OpenSamples)->Arg(8)->Arg(16)->Arg(32);

void SaveSamples(benchmark::State& state)
{
    const Shape shape = ImageOf(state.range(0));
    const CFile file(shape, 1);
    const COxd opened = COxd::Open(file.Path());
    for ([[maybe_unused]] auto _ : state)
        opened.SaveAs(file.Path());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(shape.Bytes()));
}
BENCHMARK(SaveSamples)->Arg(8)->Arg(16)->Arg(32);

} // namespace
