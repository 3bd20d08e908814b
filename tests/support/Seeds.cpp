#include "support/Seeds.h"

#include "support/Lines.h"

#include <string_view>

namespace {

constexpr std::string_view version1 =
    "[DataSet]\nChannelCount=1\nFrameCount=2\nCh0-Fr0=A\nCh0-Fr1=B\n"
    "[A]\nFrame=ForwardScan\nPoints=2\nLines=1\nDim0Unit=nm\nDim0Range=2.5\nDim0Min=-1e-6\nDim2Unit=\xC2\xB5V\n"
    "[B]\nPoints=1\nLines=1\nSaveBits=16\n"
    "[SetInfos]\nOther=0\nscansize=1\nGapVoltage2=2\nMod=4\n"
    "[SetView]\nVersion=1\nViewWidth=7\nViewHeight=5\nViewCount=2\nView0=V\nView1=none\n"
    "[V]\nViewTyp=6\nLineOp=2\nChannel=0\nFrame=1\nViewSize=3\nViewMode=1\nGraphMode=2\nAspectRatio=1\nAutoZRange=1\n"
    "ZRange=-3,5\nParCount=2\nPar0=1,Offset,3.5\nPar1=9,x,y\n";

constexpr std::string_view version2 =
    "[DataSet]\nVersion=2\nGroupCount=2\nGr0-Name=Spectroscopy\nGr0-ID=3\nGr0-Count=3\nGr1-Count=1\nGr0-Ch0=A\n"
    "Gr0-Ch2=B\nGr1-Ch0=C\nSetInfos=I\nInfoSetCount=2\nInfoSet0=T\nInfoSet1=U\n"
    "[A]\nVersion=3\nPoints=3\nLines=3\nCurLine=1\nDim0Range=1e-6\nLineDim0Min=0.5\nLineDim1Points=0\n"
    "LineDim2Points=2\nLineDim2Range=7\nSaveBits=16\n"
    "[B]\nVersion=2\nFrame=F\nPoints=1\nLines=2\nDim0Name=X\nDim1Name=Y\nDim1Range=4\nDim2Name=Z\nDim2Unit=V\n"
    "Dim2Min=-5\nDim2Range=10\nSaveBits=8\n"
    "[C]\nVersion=1\nPoints=6\nLines=1\nSaveBits=32\n"
    "[I]\n-- Scan --=--------\nImage size=5 \xC2\xB5m\nTime=1 s\n-- Tool --=--------\nTip=sharp\n"
    "[DataSet\\T]\nSubSectionCount=2\nSubSection0=V\nSubSection1=W\nGain=5\nSerial=a=b\n"
    "[DataSet\\T\\V]\nSubSectionCount=1\nSubSection0=X\nq=1\n[DataSet\\U]\nz=2\n"
    "[ProcessorSet]\nProcessorCount=2\nProcessor0=P\nProcessor1=Q\n"
    "[P]\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=3\n"
    "[Q]\nGUID={138707ED-FD93-4E28-B2B0-C5DA628CB815}\nInstanceNo=7\n"
    "[ProcessorSet-Slope:3]\nDisplayName=d\nEnabled=yes\nRangeMin=-2.5 nm\nRangeMax=3 V\nInputCount=1\n"
    "Input0Group=0\nInput0Channel=2\nOutputCount=1\nOutput0Group=1\nOutput0Channel=0\n";

constexpr std::string_view codePage = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=\xB5\x80\n";

std::string File(std::string_view header, std::size_t sampleBytes)
{
    std::string bytes = WithCrLf(header).append("\r\n#!");
    for (std::size_t i = 0; i < sampleBytes; ++i)
        bytes.push_back(static_cast<char>(i * 29));
    return bytes;
}

} // namespace

const std::vector<Seed>& Seeds()
{
    static const std::vector<Seed> seeds{
        {"version-1", File(version1, 4)}, {"version-2", File(version2, 38)}, {"code-page", File(codePage, 0)}};
    return seeds;
}
