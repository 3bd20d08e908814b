#include "oxd/example/SampleSettings.h"

namespace oxd {

namespace {

// The topography and the phase of the forward scan, and the retracts.
constexpr const char* views = R"([SetView]
Version=1
ViewWidth=1280
ViewHeight=800
ViewCount=3
View0=SetView-0
View1=SetView-1
View2=SetView-2
[SetView-0]
ViewTyp=1
LineOp=4
Frame=0
Channel=0
ViewSize=400
AutoZRange=1
[SetView-1]
ViewTyp=1
LineOp=0
Frame=0
Channel=2
ViewSize=400
AutoZRange=0
ZRange=15,45
[SetView-2]
ViewTyp=3
LineOp=2
Frame=2
Channel=1
ViewSize=400
GraphMode=1
AutoZRange=1
ParCount=1
Par0=2,Points,512
)";

constexpr const char* processors = R"([ProcessorSet]
ProcessorCount=3
Processor0=ProcessorSet-0
Processor1=ProcessorSet-1
Processor2=ProcessorSet-2
[ProcessorSet-0]
GUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}
InstanceNo=0
[ProcessorSet-Slope:0]
DisplayName=Contact slope
Enabled=1
RangeMin=310 nm
RangeMax=390 nm
InputCount=1
Input0Group=2
Input0Channel=0
OutputCount=2
Output0Group=3
Output0Channel=0
Output1Group=3
Output1Channel=1
[ProcessorSet-1]
GUID={1220F4A8-053A-494D-B28C-3635059D1530}
InstanceNo=0
[ProcessorSet-MaxAdhesion:0]
DisplayName=Adhesion
Enabled=1
BaselineMin=10 nm
BaselineMax=200 nm
InputCount=1
Input0Group=2
Input0Channel=1
OutputCount=3
Output0Group=3
Output0Channel=2
Output1Group=3
Output1Channel=3
Output2Group=3
Output2Channel=4
[ProcessorSet-2]
GUID={138707ED-FD93-4E28-B2B0-C5DA628CB815}
InstanceNo=0
[ProcessorSet-Indentation:0]
DisplayName=Indentation
Enabled=1
ContactLaw=2
InputCount=1
Input0Group=2
Input0Channel=0
OutputCount=5
Output0Group=3
Output0Channel=5
Output1Group=3
Output1Channel=6
Output2Group=3
Output2Channel=7
Output3Group=3
Output3Channel=8
Output4Group=3
Output4Channel=9
)";

// As lines of a header end.
std::string WithLineEnds(const std::string& text)
{
    std::string lines;
    for (const char c : text) {
        lines += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return lines;
}

} // namespace

std::string SampleSettings()
{
    return WithLineEnds(std::string(views) + processors);
}

} // namespace oxd
