#include "velstdlib/string/NumberText.h"
#include "velstdlib/math/SIPrefix.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

using namespace veltaris::velstdlib;

namespace {

template <class T>
std::optional<T> Parse(std::string_view text)
{
    try {
        return string::ParseNumber<T>(text);
    } catch (const boost::bad_lexical_cast&) {
        return std::nullopt;
    }
}

TEST(NumberTextTest, IntegersAreDigitsAfterASignWithinTheirRange)
{
    const std::pair<const char*, std::optional<int>> cases[] = {{"0", 0},
                                                                {"-0", 0},
                                                                {"+7", 7},
                                                                {"007", 7},
                                                                {"2147483647", 2147483647},
                                                                {"-2147483648", -2147483647 - 1},
                                                                {"2147483648", {}},
                                                                {"-2147483649", {}},
                                                                {"99999999999999999999", {}},
                                                                {"", {}},
                                                                {"-", {}},
                                                                {"+-1", {}},
                                                                {" 12", {}},
                                                                {"12 ", {}},
                                                                {"1.0", {}},
                                                                {"1.000", {}},
                                                                {"1e3", {}},
                                                                {"0x1", {}}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(Parse<int>(text), value) << text;
    EXPECT_EQ(Parse<std::uint64_t>("18446744073709551615"), ~std::uint64_t{0});
    EXPECT_EQ(Parse<std::uint64_t>("-1"), ~std::uint64_t{0});
    EXPECT_EQ(Parse<std::uint64_t>("18446744073709551616"), std::nullopt);
}

TEST(NumberTextTest, DoublesAreDecimalWhateverTheLocale)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<const char*, std::optional<double>> cases[] = {{"1.5", 1.5},
                                                                   {"-.5e+1", -5.0},
                                                                   {"5.", 5.0},
                                                                   {"+1E-3", 1e-3},
                                                                   {"1,5", {}},
                                                                   {"1.5 ", {}},
                                                                   {" 1.5", {}},
                                                                   {"", {}},
                                                                   {".", {}},
                                                                   {"1e", {}},
                                                                   {"1e+", {}},
                                                                   {"--1", {}},
                                                                   {"0x1p3", {}},
                                                                   {"1.#inf", {}},
                                                                   {"nano", {}},
                                                                   {"nan(", {}},
                                                                   {"inf", infinity},
                                                                   {"-Infinity", -infinity},
                                                                   {"1.#INF", infinity},
                                                                   {"-1.#INF", -infinity},
                                                                   {"1e999", {}},
                                                                   {"-1e999", {}},
                                                                   {"1e-999", 0.0},
                                                                   {"5e-324", 5e-324},
                                                                   {"1e99999999999999999999", {}},
                                                                   {"1e-99999999999999999999", 0.0}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(Parse<double>(text), value) << text;
    EXPECT_EQ(Parse<double>("1" + std::string(500, '0') + "e-500"), 1.0) << "neither part decides alone";
    EXPECT_EQ(Parse<double>("1" + std::string(500, '0') + "e-1"), std::nullopt);
    EXPECT_EQ(Parse<double>("0." + std::string(500, '0') + "1"), 0.0);
    for (const auto& [text, negative] :
         {std::pair("1.#IND", false), {"1.#QNAN", false}, {"-1.#IND", true}, {"-1.#QNAN", true}}) {
        const auto bits = std::bit_cast<std::uint64_t>(Parse<double>(text).value_or(0));
        EXPECT_EQ(bits, negative ? 0xFFF8000000000000U : 0x7FF8000000000000U) << text;
    }
    EXPECT_TRUE(std::isnan(Parse<double>("NaN(x)").value_or(0)));
}

TEST(NumberTextTest, DoublesAreWrittenWithSixDigits)
{
    const std::pair<double, const char*> cases[] = {{1.234567e-5, "1.23457e-05"},
                                                    {0.1, "0.1"},
                                                    {1234567, "1.23457e+06"},
                                                    {100000, "100000"},
                                                    {-0.0, "-0"},
                                                    {1e100, "1e+100"},
                                                    {std::numeric_limits<double>::infinity(), "inf"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(string::FormatDouble(value), text);
}

TEST(NumberTextTest, PrefixesScaleNumbers)
{
    const std::pair<const char*, std::optional<double>> cases[] = {
        {"2.5n", 2.5e-9},  {"2.5", 2.5},
        {"2 ", 2.0},       {"3\u00B5", 3e-6},
        {"3\u03BC", 3e-6}, {"1e3k", 1e6},
        {"1y", 1e-24},     {"1Y", 1e24},
        {"k", {}},         {"", {}},
        {"1nn", {}},       {"1x", {}},
        {"1 n", {}},       {"-inf", -std::numeric_limits<double>::infinity()}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(math::ParseSINumber(text).has_value(), value.has_value()) << text;
    for (const auto& [text, value] : cases)
        EXPECT_DOUBLE_EQ(math::ParseSINumber(text).value_or(0), value.value_or(0)) << text;
}

} // namespace
