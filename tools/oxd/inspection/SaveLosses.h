// Says what a save of a file drops or changes, although the tool carries some sections over, before it happens.
#pragma once

#include "oxd/inspection/CarriedSections.h"
#include "oxd/inspection/InspectFile.h"

#include <string>
#include <vector>

namespace oxd {

struct SaveLosses
{
    std::vector<std::string> sentences; // one for each kind
    bool isHarmless = true;             // nothing is lost, though the file is written otherwise
};

SaveLosses FindSaveLosses(const inspect::Inspection& inspection, const CarriedSections& carried);

// Complains of them. Throws a Failure if there are any that are not harmless and `strict` is set.
void AnnounceSave(const inspect::Inspection& inspection, const CarriedSections& carried, bool strict);

} // namespace oxd
