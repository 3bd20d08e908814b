#include "Platform.h"
#include "Results.h"
#include "Run.h"

int main(int argc, char** argv)
{
    oxd::platform::IgnoreBrokenPipes();
    oxd::Results results;
    return oxd::Run(oxd::platform::Arguments(argc, argv), results);
}
