// Microbenchmarks of the measurement information, as lists and as a tree.
#include "support/Oxd.h"

#include <benchmark/benchmark.h>

namespace {

using bench::COxd;

std::string NameOf(std::uint64_t i)
{
    return "Setting " + std::to_string(i);
}

COxd FileWithItems(std::int64_t count)
{
    COxd file = COxd::Create("unsaved.oxd");
    CreateInfoGroupWithName(*file, "Group");
    for (std::uint64_t i = 0; i < static_cast<std::uint64_t>(count); ++i)
        CreateInfoItem(*file, 0, NameOf(i).c_str(), "value");
    bench::CheckLibrary();
    return file;
}

void CreateItems(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        FileWithItems(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CreateItems)->Arg(60)->Arg(1000)->Arg(50'000);

void FindItem(benchmark::State& state)
{
    const COxd file = FileWithItems(state.range(0));
    const std::string name = NameOf(static_cast<std::uint64_t>(state.range(0)) / 2);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(GetInfoItemIndex(*file, 0, name.c_str()));
}
BENCHMARK(FindItem)->Arg(60)->Arg(1000)->Arg(50'000);

void FindGroup(benchmark::State& state)
{
    const COxd file = COxd::Create("unsaved.oxd");
    for (std::uint64_t i = 0; i < static_cast<std::uint64_t>(state.range(0)); ++i)
        CreateInfoGroupWithName(*file, NameOf(i).c_str());
    const std::string name = NameOf(static_cast<std::uint64_t>(state.range(0)) / 2);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(GetInfoGroupIndex(*file, name.c_str()));
}
BENCHMARK(FindGroup)->Arg(60)->Arg(1000)->Arg(50'000);

void NextSibling(benchmark::State& state)
{
    const COxd file = FileWithItems(state.range(0));
    const auto first = SelectFirstChildMetaInfoItem(*file, SelectFirstChildMetaInfoItem(*file, 1));
    auto node = first;
    std::int64_t left = state.range(0);
    for ([[maybe_unused]] auto _ : state) {
        if (--left == 0) {
            node = first;
            left = state.range(0) - 1;
        }
        node = SelectNextMetaInfoItem(*file, node);
    }
    bench::CheckLibrary();
}
BENCHMARK(NextSibling)->Arg(1000)->Arg(16'000);

void DeleteItems(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const COxd file = FileWithItems(state.range(0));
        state.ResumeTiming();
        for (std::int64_t i = 0; i < state.range(0); ++i)
            DeleteInfoItem(*file, 0, 0);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(DeleteItems)->Arg(1000)->Arg(16'000);

} // namespace
