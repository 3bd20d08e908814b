// Runs the tests in the locale that the environment asks for, set as a host program may set it: for C and for C++.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>

namespace {

bool UseLocale(const char* name)
{
    if (!std::setlocale(LC_ALL, name)) {
        std::cerr << "There is no locale " << name << '\n';
        return false;
    }
    std::locale::global(std::locale(name));
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
