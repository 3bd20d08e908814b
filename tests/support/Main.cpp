// Runs the tests in the locale that the environment asks for, set as a host program may set it: for C and for C++.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <string>

namespace {

// Numbers as 1'234,5: a program may also have set a locale of its own making.
class CGrouping : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '\''; }
    std::string do_grouping() const override { return "\3"; }
};

bool UseLocale(const std::string& name)
{
    if (name == "grouping") {
        std::locale::global(std::locale(std::locale::classic(), new CGrouping));
        return true;
    }
    if (!std::setlocale(LC_ALL, name.c_str())) {
        std::cerr << "There is no locale " << name << '\n';
        return false;
    }
#ifndef _WIN32 // where the C++ library has no locales by name
    std::locale::global(std::locale(name));
#endif
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const char* const localeName = std::getenv("VELOXD_TEST_LOCALE");
    if (localeName && !UseLocale(localeName))
        return EXIT_FAILURE;
    return RUN_ALL_TESTS();
}
