#include "oxd/system/Messages.h"

#include "oxd/system/Text.h"

#include <iostream>

namespace oxd {

void Complain(const std::string& message)
{
    std::cerr << "oxd: " << Printable(message) << std::endl;
}

} // namespace oxd
