// Finding what the arguments of an export name: data set, group, channel, information.
#pragma once

#include "api/Arguments.h"
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/channels/DataGroup.h"

#include <cstdint>

using veltaris::velflexlib::dataset::CDataBuffer;
using veltaris::velflexlib::dataset::CDataGroup;
using veltaris::velflexlib::dataset::CDataSet;
using veltaris::velflexlib::dataset::CInfoSet;
using veltaris::velflexlib::dataset::CInfoSetItem;

// Each throws std::runtime_error when there is no such thing: first for the file handle, and then, in the words of the
// call, from the outermost argument to the innermost. References hold until an export removes what they refer to.
// May be called by several threads at once, for different files: each file is for one thread at a time.

CDataSet& DataSetOf(std::uint64_t handle);
CInfoSet& InfoSetOf(std::uint64_t handle);

CDataGroup& GroupOf(const CCall& call, std::uint64_t handle, std::uint64_t group);
// The group, provided that it has the channel slot, which may be empty.
CDataGroup& GroupWithSlot(const CCall& call, std::uint64_t handle, std::uint64_t group, std::uint64_t channel);
CDataBuffer& ChannelOf(const CCall& call, std::uint64_t handle, std::uint64_t group, std::uint64_t channel);

// A top-level group of the information, and an item in one, by position. Only the low 32 bits of a position count.
CInfoSetItem& InfoOf(const CCall& call, std::uint64_t handle, std::uint64_t info);
CInfoSetItem& InfoItemOf(const CCall& call, std::uint64_t handle, std::uint64_t info, std::uint64_t item);
// A node of the information tree by its handle.
CInfoSetItem& MetaItemOf(const CCall& call, const CInfoSet& infoSet, std::uint64_t item);
