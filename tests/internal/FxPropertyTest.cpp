#include "velflexlib/fx/FxProperty.h"
#include "velflexlib/fx/FxPropertyHelpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltaris;
using namespace velflexlib::fx;

namespace {

struct Case
{
    const char* text;
    double value;
    const char* unit;
};

constexpr Case cases[] = {
    {"2.5 nm", 2.5e-9, "m"}, {"2.5nm", 2.5e-9, "m"},   {" +2.5\tnm ", 2.5e-9, "m"},   {"-3e-9 m", -3e-9, "m"},
    {"5n", 5e-9, ""},        {"5 \u03BCV", 5e-6, "V"}, {"5 m\u03A9", 5e-3, "\u03A9"}, {"1e3 kHz", 1e6, "Hz"},
    {"5eV", 5, "eV"},        {"5 m/s", 5, "m/s"},      {"5 m\u00B2", 5, "m\u00B2"},   {"5 ppm", 5, "ppm"},
    {"1e-999 m", 0, "m"}};

TEST(FxPropertyTest, ATextIsANumberAndPerhapsAPrefixAndAUnit)
{
    for (const auto& [text, value, unit] : cases) {
        const auto property = ParseFxProperty(text);
        ASSERT_TRUE(property) << text;
        EXPECT_DOUBLE_EQ(property->value, value) << text;
        EXPECT_EQ(property->unit, unit) << text;
        EXPECT_EQ(ParseFxProperty(FormatFxProperty(*property)), property) << text;
    }
    EXPECT_EQ(FormatFxProperty({1.5e-9, "m"}), "1.5e-09 m");
    EXPECT_EQ(FormatFxProperty({0.5, ""}), "0.5");
}

TEST(FxPropertyTest, OtherTextsAreNone)
{
    for (const char* text : {"", " ", "nm", "+", "+-5", "--5 m", "2,5 nm", "1 2", ".", "inf m", "nan", "nanom",
                             "1e999 m", "1e300 Ym", "1.#INF"})
        EXPECT_FALSE(ParseFxProperty(text)) << text;
}

TEST(FxPropertyTest, KeysHoldPropertiesOrLeaveTheDefault)
{
    velstdlib::util::CTextStore texts;
    velstdlib::util::CVELKeyToValueList keys(texts);
    const CFxProperty defaultValue{7, "V"};
    EXPECT_EQ(ReadFxProperty(keys, "k", defaultValue), defaultValue);
    keys.SetValue("k", "wide");
    EXPECT_EQ(ReadFxProperty(keys, "k", defaultValue), defaultValue);
    keys.SetValue("k", "3k");
    EXPECT_EQ(ReadFxProperty(keys, "k", defaultValue), (CFxProperty{3000, "V"}));
    WriteFxProperty(keys, "k", {2, "m\r\n#!"});
    EXPECT_EQ(keys.GetValue("k"), "2 m  # !") << "what is written never breaks the header";
}

} // namespace
