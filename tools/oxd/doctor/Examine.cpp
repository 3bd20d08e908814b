#include "oxd/doctor/CheckBuild.h"
#include "oxd/doctor/CheckSystem.h"
#include "oxd/doctor/Diagnosis.h"
#include "oxd/doctor/WriteReadTest.h"

namespace oxd {

Diagnosis Examine(const std::string& toolVersion, bool outputIsTerminal)
{
    Diagnosis diagnosis;
    CheckBuild(toolVersion, diagnosis.checks);
    CheckTexts(diagnosis.checks);
    CheckTerminal(outputIsTerminal, diagnosis.checks);
    CheckTemporaryFolder(diagnosis.checks);
    CheckWritingAndReading(diagnosis);
    return diagnosis;
}

} // namespace oxd
