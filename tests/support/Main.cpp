// Runs the tests in the locale that VELOXD_TEST_LOCALE names, set for C and for C++ as a host program may do.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <string>

namespace {

// Numbers such as 1'234,5: a program may also set a locale of its own making.
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
        std::cerr << "Missing locale: " << name << '\n';
        return false;
    }
#ifndef _WIN32 // the C++ library has no named locales there
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
    const int result = RUN_ALL_TESTS();
    return ::testing::UnitTest::GetInstance()->test_to_run_count() > 0 ? result : EXIT_FAILURE;
}
