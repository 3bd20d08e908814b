#include "velstdlib/string/NumberText.h"
#include "velflexlib/fx/FxProperty.h"
#include "velstdlib/math/Round.h"
#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/Texts.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <optional>
#include <string>
#include <utility>

using namespace veltaris::velflexlib::fx;
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

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(NumberTextTest, IntegersAreDigitsAfterASignWithinTheirRange)
{
    EXPECT_EQ(Parse<int>("007"), 7);
    EXPECT_EQ(Parse<int>("+2147483647"), 2147483647);
    EXPECT_EQ(Parse<int>("-2147483648"), -2147483647 - 1);
    for (const char* text : {"2147483648", "-2147483649", "99999999999999999999", "", "-", "+-1", " 12", "12 ", "1.0",
                             "1.000", "1e3", "0x1"})
        EXPECT_EQ(Parse<int>(text), std::nullopt) << text;
    for (const char* const largest : {"18446744073709551615", "-1"})
        EXPECT_EQ(Parse<std::uint64_t>(largest), ~std::uint64_t{0});
    EXPECT_EQ(Parse<std::uint64_t>("18446744073709551616"), std::nullopt);
}

TEST(NumberTextTest, DoublesAreDecimalWhateverTheLocale)
{
    const std::string zeros(500, '0');
    const std::pair<std::string, std::optional<double>> cases[] = {
        {"-.5e+1", -5.0},
        {"+1.E-3", 1e-3},
        {"5e-324", 5e-324},
        {"+INFINITY", infinity},
        {"-inf", -infinity},
        {"1.#INF", infinity},
        {"-1.#INF", -infinity},
        {"1e-99999999999999999999", 0.0},
        {"1" + zeros + "e-500", 1.0}, // neither decides alone
        {"1" + zeros + "e-1", std::nullopt},
        {"0." + zeros + "1", 0.0}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(Parse<double>(text), value) << text;
    for (const char* text : {"1,5", "1.5 ", " 1.5", "", ".", "1e", "1e+", "--1", "0x1p3", "1.#inf", "nano", "nan(",
                             "1e999", "-1e999", "1e99999999999999999999"})
        EXPECT_EQ(Parse<double>(text), std::nullopt) << text;
    for (const std::string text : {"1.#IND", "1.#QNAN", "nan", "NaN(x)"}) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(Parse<double>(text).value_or(0)), 0x7FF8000000000000U) << text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(Parse<double>("-" + text).value_or(0)), 0xFFF8000000000000U) << text;
    }
}

TEST(NumberTextTest, RoundingGoesToTheNearestIntegerAndFailsWhereThereIsNone)
{
    const std::pair<double, std::int64_t> cases[] = {
        {0.5, 1}, {-0.5, -1}, {2.5, 3}, {0x1.fffffffffffffp-2, 0}, {-1.4, -1}, {-0x1p63, -0x7FFFFFFFFFFFFFFF - 1}};
    for (const auto& [value, rounded] : cases)
        EXPECT_EQ(math::vel_round(value), rounded) << value;
    for (const double value : {0x1p63, -infinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THROW(math::vel_round(value), std::runtime_error) << value;
}

TEST(TextTableTest, ATextHasAKnownNumberAndTakesItsArgumentsAsTheyAre)
{
    using string::TextId;
    for (const unsigned unknown : {0U, 11U, ~0U})
        EXPECT_THROW(string::GetText(static_cast<TextId>(unknown)), string::CGetTextIdUndefinedException) << unknown;
    EXPECT_EQ(string::FormatText(TextId::FileCannotBeSaved, {"%s%", "100%s.oxd"}), "%s% Filename: 100%s.oxd");
}

TEST(FxPropertyTest, ATextIsANumberAndPerhapsAPrefixAndAUnit)
{
    const std::pair<const char*, CFxProperty> cases[] = {{"2.5nm", {2.5e-9, "m"}},   {" +2.5\tnm ", {2.5e-9, "m"}},
                                                         {"5 \u00B5V", {5e-6, "V"}}, {"5 m\u03A9", {5e-3, "\u03A9"}},
                                                         {"1e3 kHz", {1e6, "Hz"}},   {"1 YV", {1e24, "V"}},
                                                         {"5eV", {5, "eV"}},         {"5 m/s", {5, "m/s"}},
                                                         {"5 ppm", {5, "ppm"}},      {"5n", {5e-9, ""}}};
    for (const auto& [text, expected] : cases) {
        const auto property = ParseFxProperty(text);
        ASSERT_TRUE(property) << text;
        EXPECT_DOUBLE_EQ(property->value, expected.value) << text;
        EXPECT_EQ(property->unit, expected.unit) << text;
    }
    for (const char* text : {"", " ", "nm", "+", "+-5", "--5 m", "2,5 nm", "1 2", ".", "inf m", "nan", "nanom",
                             "1e999 m", "1e300 Ym", "1.#INF"})
        EXPECT_FALSE(ParseFxProperty(text)) << text;

    EXPECT_EQ(math::ParseSINumber("-inf"), -infinity) << "which ends like a prefix";
    for (const char* text : {"k", "1nn", "1x"})
        EXPECT_EQ(math::ParseSINumber(text), std::nullopt) << text;
}

} // namespace
