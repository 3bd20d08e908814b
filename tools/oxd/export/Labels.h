// What a picture says of itself, for programs and for people who find it years later.
#pragma once

#include "oxd/export/ExportKinds.h"
#include "oxd/export/ExportRequest.h"
#include "oxd/picture/PictureText.h"
#include "oxd/picture/Scale.h"

#include <vector>

namespace oxd {

// The title that was asked for, or the names of group, channel and operator.
std::string TitleOf(const Export& wanted, const Channel& channel);

std::vector<PictureText> LabelsOf(const Export& wanted, const Channel& channel);

// The labels of the job and the range of values that the picture spans. Nothing if the job has no labels.
std::vector<PictureText> LabelsWithRange(const ExportJob& job, const Scale& range);

} // namespace oxd
