#include "oxd/commands/Run.h"
#include "oxd/system/Platform.h"
#include "oxd/system/Results.h"

#include <boost/nowide/args.hpp>

#include <algorithm>

int main(int argc, char** argv)
{
    oxd::platform::IgnoreBrokenPipes();
    const boost::nowide::args inUtf8(argc, argv); // on Windows, where the system's code page lacks most characters
    oxd::Results results;
    return oxd::Run({argv + std::min(argc, 1), argv + argc}, results);
}
