// The settings of the system that matter to the tool.
#pragma once

#include "oxd/doctor/Diagnosis.h"

namespace oxd {

void CheckTexts(Checks& checks);
void CheckTerminal(bool outputIsTerminal, Checks& checks);
void CheckTemporaryFolder(Checks& checks);

} // namespace oxd
