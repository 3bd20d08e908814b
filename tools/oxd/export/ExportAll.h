// Writes every channel of a file, each as a file of its own in one folder, or all of them on one sheet.
#pragma once

#include "oxd/export/Export.h"
#include "oxd/system/Failure.h"

#include <functional>

namespace oxd {

// What became of one of the channels, as soon as that is known: its gaps, or why it has no file.
using ChannelReport = std::function<void(const ExportGaps& gaps)>;
using FailureReport = std::function<void(const Failure& failure)>;

// `wanted` says how, and its output is the folder, which is made unless it is there. Of its selection only the group
// counts: empty for all of them. A file is called after group and channel, with a number behind names that several
// channels have, and with "_" for characters that a system may refuse in names. A channel that cannot be exported is
// reported, and the next one is tried. Throws a Failure if the file cannot be read, has no such group, or the folder
// cannot be made.
void ExportAll(const Export& wanted, const ChannelReport& done, const FailureReport& failed);

// Writes small pictures of the same channels side by side into one, which is the output. Where one cannot be shown, it
// says why. Throws a Failure as well if there are too many for one sheet, if the output is to be no picture in colours,
// or if something is asked for that only a single picture has.
void ExportSheet(const Export& wanted, const ChannelReport& done, const FailureReport& failed);

} // namespace oxd
