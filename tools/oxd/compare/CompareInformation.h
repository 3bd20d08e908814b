// Compares the measurement information of two files, as a tree.
#pragma once

#include "oxd/compare/Recorder.h"
#include "oxd/library/DataSet.h"

namespace oxd {

// Groups and items are found by their path. Where a group has several of one kind and name, they are paired in order;
// apart from that, order does not count. A group that only one file has is one difference, whatever is in it.
void CompareInformation(const DataSet& a, const DataSet& b, Recorder& recorder);

} // namespace oxd
