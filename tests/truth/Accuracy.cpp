// Prints the tables of accuracy in docs/processors.md or, with "chart", their chart.
#include "truth/Chart.h"
#include "truth/Statistics.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <string>

using namespace truth;

namespace {

// Two digits. The C library of Windows does not pad every number that it prints so: texts are padded.
std::string Digits(double value)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2g", value);
    return text.data();
}

void PrintRow(const CQuantity& quantity, double ratio, const CStatistics& s)
{
    std::printf("| %-13s | %-4s | %15.0f | %10.1f %% | %7s | %6s | %12s |\n", quantity.name, quantity.unit, ratio,
                100 * s.given, Digits(s.bias).c_str(), Digits(s.spread).c_str(), Digits(s.stated).c_str());
}

void PrintByNoise(const std::vector<CTrial>& trials)
{
    std::puts("| Quantity      | Unit | Signal to noise | With a value | Bias    | Spread | Stated error |");
    std::puts("|---------------|------|-----------------|--------------|---------|--------|--------------|");
    for (int quantity = 0; quantity < quantityCount; ++quantity) {
        for (const double ratio : signalToNoise) {
            const auto belongs = [=](const CTrial& trial) { return trial.signalToNoise == ratio; };
            PrintRow(quantities[static_cast<std::size_t>(quantity)], ratio,
                     StatisticsOf(static_cast<Quantity>(quantity), trials, belongs));
        }
    }
}

template <class Belongs>
void PrintCondition(const char* condition, const std::vector<CTrial>& trials, Belongs belongs)
{
    std::printf("| %-10s |", condition);
    for (const Quantity quantity : {Contact, Adhesion, Indentation}) {
        const CStatistics s = StatisticsOf(
            quantity, trials, [&](const CTrial& trial) { return trial.signalToNoise == 100 && belongs(trial.recipe); });
        std::printf(" %19s | %6s |", Digits(s.bias).c_str(), Digits(s.spread).c_str());
    }
    std::puts("");
}

void PrintByCondition(const std::vector<CTrial>& trials)
{
    using recipe::CRecipe;
    std::puts(
        "| Condition  | Contact point: bias | Spread | Adhesion: bias      | Spread | Indentation: bias   | Spread |");
    std::puts(
        "|------------|---------------------|--------|---------------------|--------|---------------------|--------|");
    PrintCondition("no snap-in", trials, [](const CRecipe& r) { return r.snapIn == 0; });
    PrintCondition("snap-in", trials, [](const CRecipe& r) { return r.snapIn > 0; });
    PrintCondition("no tilt", trials, [](const CRecipe& r) { return r.tilt == 0; });
    PrintCondition("tilt 0.005", trials, [](const CRecipe& r) { return r.tilt == 0.005; });
    PrintCondition("tilt -0.02", trials, [](const CRecipe& r) { return r.tilt == -0.02; });
    for (const std::size_t points : {128U, 256U, 512U, 1024U}) {
        const std::string name = std::to_string(points) + " points";
        PrintCondition(name.c_str(), trials, [=](const CRecipe& r) { return r.points == points; });
    }
}

} // namespace

int main(int argc, char** argv)
{
    const auto trials = RunTrials();
    if (argc > 1 && std::strcmp(argv[1], "chart") == 0) {
        std::fputs(Chart(trials).c_str(), stdout);
        return 0;
    }
    PrintByNoise(trials);
    std::puts("\nAt a ratio of 100, in nm:\n");
    PrintByCondition(trials);
    return 0;
}
