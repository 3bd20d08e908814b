#include "oxd/commands/Run.h"

int main(int argc, char** argv)
{
    return oxd::RunProcess(argc, argv);
}
