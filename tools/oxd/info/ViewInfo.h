// What `oxd info` tells of views and processors, which are settings of the acquiring application.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace oxd {

// The channel that a view shows, or that a processor reads or writes. It need not be there.
struct LinkInfo
{
    std::uint64_t index = 0; // in the list that it is in
    std::optional<std::uint64_t> group;
    std::optional<std::uint64_t> channel;
    std::optional<std::string> groupName;
    std::optional<std::string> channelName; // only of a channel that is there
};

// Entries of a list that name the same section are one view or processor, since a file can name it very often.
struct ViewInfo
{
    std::vector<std::uint64_t> positions = {}; // in the list of views
    LinkInfo channel;
    int kind = 0;
    int mode = 0;
    int graphMode = 0;
    int size = 0;
    int aspectRatio = 0;
    int lineOperator = 0;                                     // its code
    std::optional<std::pair<int, int>> range = {};            // of shown values; nothing if it is found automatically
    std::vector<std::pair<int, std::string>> parameters = {}; // the code of an operator, and "name=value"
};

struct ParameterInfo
{
    std::string key;
    double value = 0;
    std::string unit;
    bool isGiven = false; // by the file, else it is the default of its kind
};

struct ProcessorInfo
{
    std::vector<std::uint64_t> positions = {}; // in the list of processors
    std::string kind;
    std::uint64_t instance = 0;
    std::string name;
    bool isEnabled = true;
    std::vector<ParameterInfo> parameters = {};
    std::vector<LinkInfo> inputs, outputs; // those with an address
};

struct ViewArea
{
    int width = 0;
    int height = 0;
    std::vector<ViewInfo> views;
};

ViewArea ReadViews(const inspect::Inspection& inspection);
std::vector<ProcessorInfo> ReadProcessors(const inspect::Inspection& inspection);

// For example ForwardScan/Topography, or group 9, channel 0 (not there). Control characters in it stay.
std::string LinkText(const LinkInfo& link);

} // namespace oxd
