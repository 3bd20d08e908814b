#include "oxd/system/Messages.h"

#include "oxd/system/Text.h"

#include <iostream>
#include <sstream>

namespace oxd {

namespace {

bool& DetailsAreShown()
{
    static bool shown = false;
    return shown;
}

} // namespace

void Complain(const std::string& message)
{
    std::cerr << "oxd: " << Printable(message) << std::endl;
}

void Explain(const std::string& details)
{
    std::istringstream lines(DetailsAreShown() ? details : std::string());
    for (std::string line; std::getline(lines, line);) {
        std::cerr << "oxd: debug: " << Printable(line) << std::endl;
    }
}

void ShowDetails()
{
    DetailsAreShown() = true;
}

} // namespace oxd
