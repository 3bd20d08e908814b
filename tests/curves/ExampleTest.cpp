// The curve that docs/processors.md prints has the values that it prints.
#include "curves/CurveRecipe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <locale>
#include <map>
#include <sstream>
#include <string>

using namespace recipe;

namespace {

struct CExample
{
    std::vector<double> z, approach, retract;  // in metres
    std::map<std::string, std::string> values; // as printed
};

// Numbers in documents have points, whatever the locale.
std::istringstream Classic(const std::string& text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    return stream;
}

// The block of comma-separated numbers, and the rows "| quantity | value | unit |" behind it.
CExample ReadExample()
{
    std::ifstream document(DOCUMENT);
    CExample example;
    std::string line;
    while (std::getline(document, line) && line != "z,approach,retract") {
    }
    while (std::getline(document, line) && line != "```") {
        std::istringstream row = Classic(line);
        double numbers[3] = {};
        char comma = 0;
        row >> numbers[0] >> comma >> numbers[1] >> comma >> numbers[2];
        example.z.push_back(1e-9 * numbers[0]);
        example.approach.push_back(1e-9 * numbers[1]);
        example.retract.push_back(1e-9 * numbers[2]);
    }
    while (std::getline(document, line) && line.rfind("## ", 0) != 0) {
        std::istringstream row(line);
        std::string name, value;
        if (std::getline(row, name, '|') && std::getline(row, name, '|') && std::getline(row, value, '|'))
            example.values[name.substr(1, name.find_last_not_of(' '))] = value;
    }
    return example;
}

void ExpectPrinted(CExample& example, const std::string& name, double value)
{
    ASSERT_EQ(example.values.count(name), 1U) << name;
    const std::string printed = example.values[name];
    const std::size_t point = printed.find('.');
    const std::size_t end = printed.find_last_not_of(' ') + 1;
    const double unit = point == std::string::npos ? 1e-9 : std::pow(10.0, -static_cast<double>(end - point - 1));
    double number = 0;
    EXPECT_TRUE(Classic(printed) >> number) << name;
    EXPECT_NEAR(number, value, 0.51 * unit) << name;
}

TEST(ExampleTest, TheCurveInTheDocumentHasTheValuesThatItPrints)
{
    CExample example = ReadExample();
    ASSERT_EQ(example.z.size(), 24U);
    const double step = example.z[1] - example.z[0];
    const VELCurves approach{1, 24, 24, example.z[0], step, example.approach.data()};
    const VELCurves retract{1, 24, 24, example.z[0], step, example.retract.data()};
    VELCurveOptions options = Defaults();
    options.slope_from = 160e-9;
    options.slope_to = 230e-9;
    options.baseline_share = 0.67;
    const CResults results = Analyse(approach, retract, options);
    constexpr double nano = 1e9;
    ExpectPrinted(example, "slope", results.slope.slope);
    ExpectPrinted(example, "baseline at 0", nano * results.baseline.offset);
    ExpectPrinted(example, "noise", nano * results.baseline.noise);
    ExpectPrinted(example, "contact point", nano * results.contact.position);
    ExpectPrinted(example, "its error", nano * results.contact.error);
    ExpectPrinted(example, "largest indentation", nano * results.indentation.largest);
    ExpectPrinted(example, "force there", nano * results.indentation.force);
    ExpectPrinted(example, "adhesion", nano * results.adhesion.signal);
    ExpectPrinted(example, "error of adhesion", nano * results.adhesion.error);
    ExpectPrinted(example, "adhesion force", nano * results.adhesion.force);
    ExpectPrinted(example, "at", nano * results.adhesion.position);
}

} // namespace
