// Processors derive channels from curves, and what they derive is true, also where there is nothing to derive.
#include "oxd/example/Noise.h"
#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <map>

namespace {

using nlohmann::json;

constexpr std::size_t curveCount = 16;

// How the curve of a line of the sample was made, as docs/oxd.md says.
constexpr double springConstant = 0.2, modulus = 30e6;
constexpr double zStep = 400e-9 / 511;

struct Truth
{
    double contact, adhesion;

    explicit Truth(std::size_t line)
        : contact((272 + static_cast<double>(line)) * 1e-9), adhesion((30 - 0.5 * static_cast<double>(line)) * 1e-9)
    {
    }

    // Of a cone with a half angle of 20°: the root of stiffness δ² = spring constant (way - δ).
    double IndentationAt(double z) const
    {
        const double ratio = 2 / std::acos(-1) * modulus / 0.75 * 0.364 / springConstant;
        return (std::sqrt(1 + 4 * ratio * (z - contact)) - 1) / (2 * ratio);
    }

    double SlopeWithin(double from, double to) const
    {
        double n = 0, x = 0, y = 0, xx = 0, xy = 0;
        for (int i = 0; i < 512; ++i) {
            const double z = i * zStep;
            if (z < from || z > to)
                continue;
            const double deflection = z - contact - IndentationAt(z) + 0.005 * z;
            n += 1, x += z, y += deflection, xx += z * z, xy += z * deflection;
        }
        return (xy - x * y / n) / (xx - x * x / n);
    }
};

// What was derived, by names.
std::map<std::string, json> Quantities(const std::string& document)
{
    std::map<std::string, json> quantities;
    const json parsed = json::parse(document);
    for (const json& result : parsed["results"])
        for (const json& quantity : result["quantities"])
            quantities[quantity["name"]] = quantity;
    return quantities;
}

// A channel of 3 lines: a straight one of slope 0.5, one that was not acquired, and one of 3 points.
const std::string threeLines =
    oneChannel +
    "Version=3\nPoints=8\nLines=3\nSaveBits=32\nDim0Unit=m\nDim0Min=0\nDim0Range=7\nDim1Name=Row\nDim1Min=0\nDim1Range="
    "2\n"
    "Dim2Name=Z\nDim2Unit=V\nDim2Min=-1\nDim2Range=2\nLineDim0Points=8\nLineDim1Points=0\nLineDim2Points=3\n";

std::string StraightLine()
{
    std::string samples;
    for (std::uint32_t i = 0; i < 16; ++i) { // two lines
        const std::uint32_t stored = (i % 8) << 28U;
        for (unsigned shift = 0; shift < 32; shift += 8)
            samples += static_cast<char>((stored >> shift) & 0xFFU);
    }
    return samples;
}

using Addresses = std::vector<std::pair<int, int>>;

std::string Links(const std::string& prefix, const Addresses& addresses)
{
    std::string text = prefix + "Count=" + std::to_string(addresses.size()) + "\n";
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        const std::string link = prefix + std::to_string(i);
        text.append(link).append("Group=").append(std::to_string(addresses[i].first)).append("\n");
        text.append(link).append("Channel=").append(std::to_string(addresses[i].second)).append("\n");
    }
    return text;
}

// A slope processor with the number, which reads the channel of group 0.
std::string Slope(int number, int input, const Addresses& outputs)
{
    const std::string n = std::to_string(number);
    return "[S" + n + "]\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=" + n + "\n[ProcessorSet-Slope:" + n +
           "]\nDisplayName=S" + n + "\n" + Links("Input", {{0, input}}) + Links("Output", outputs);
}

std::string Slope(int number, int input, int output)
{
    return Slope(number, input, Addresses{{0, output}});
}

const std::string oneProcessor = "[ProcessorSet]\nProcessorCount=1\nProcessor0=S0\n";
const std::string twoProcessors = "[ProcessorSet]\nProcessorCount=2\nProcessor0=S0\nProcessor1=S1\n";

} // namespace

using ProcessTest = ToolTest;

TEST_F(ProcessTest, FindsWhatTheSampleWasMadeWith)
{
    const auto found = Quantities(ResultsOf("process sample.oxd --json"));
    const auto value = [&](const std::string& name, std::size_t curve) {
        return found.at(name)["values"][curve].get<double>();
    };
    EXPECT_EQ(found.at("Adhesion")["unit"], "N");
    const auto expectNear = [&](const std::string& name, std::size_t curve, double truth) {
        EXPECT_NEAR(value(name, curve), truth, 4 * value(name + " error", curve)) << name << " of " << curve;
    };
    for (std::size_t i = 0; i < curveCount; ++i) {
        const Truth truth(i);
        expectNear("Contact slope", i, truth.SlopeWithin(310e-9, 390e-9));
        expectNear("Indentation contact point", i, truth.contact);
        expectNear("Indentation maximum", i, truth.IndentationAt(400e-9));
        expectNear("Adhesion", i, springConstant * truth.adhesion);
        EXPECT_NEAR(value("Adhesion position", i), truth.contact - truth.adhesion, 1.01 * zStep) << i;
        EXPECT_LT(value("Indentation contact point error", i), 1e-9);
        EXPECT_LT(value("Indentation maximum error", i), 1e-9);
        EXPECT_LT(value("Adhesion error", i), 0.15e-9);
        EXPECT_LT(value("Contact slope error", i), 0.01);
    }
}

TEST_F(ProcessTest, MakesChannelsOfWhatItDerives)
{
    ResultsOf("process sample.oxd -o out.oxd --strict");
    const auto found = Quantities(ResultsOf("process sample.oxd --json"));
    EXPECT_EQ(found.size(), 10U);
    const auto handle = Open("out.oxd");
    EXPECT_EQ(Text(GetGroupName, handle, 3), "Processed");
    EXPECT_EQ(GetChannelCount(handle, 3), found.size());
    for (const auto& [name, quantity] : found) {
        const std::uint64_t channel = quantity["channel"];
        EXPECT_EQ(quantity["group"], 3);
        EXPECT_EQ(Text(GetChannelData_SignalAxisName, handle, 3, channel), name);
        EXPECT_EQ(Text(GetChannelData_SignalAxisUnit, handle, 3, channel), quantity["unit"]);
        EXPECT_EQ(Text(GetChannelData_LineAxisName, handle, 3, channel), "Curve");
        ASSERT_EQ(GetChannelData_Lines(handle, 3, channel), curveCount);
        const double range = GetChannelData_SignalAxisRange(handle, 3, channel);
        for (std::size_t i = 0; i < curveCount && !quantity["values"].is_null(); ++i) {
            double value = 0;
            GetChannelData_LineReal(handle, 3, channel, i, 0, &value);
            EXPECT_NEAR(value, quantity["values"][i].get<double>(), 2 * range / (1 << 30)) << name;
        }
    }
    const std::uint64_t curves = found.at("Indentation")["channel"];
    for (std::size_t i = 0; i < curveCount; ++i) {
        const double begin = GetChannelData_PointAxisMinPerLine(handle, 3, curves, i);
        const double contact = found.at("Indentation contact point")["values"][i];
        EXPECT_NEAR(begin - contact, 0.4e-9, 0.4e-9 + 1e-14) << "a curve begins with the first point behind it";
        const double step = GetChannelData_PointAxisRangePerLine(handle, 3, curves, i) /
                            static_cast<double>(GetChannelData_Points(handle, 3, curves) - 1);
        EXPECT_NEAR(step, 400e-9 / 511, 1e-14);
        const auto points = static_cast<double>(GetChannelData_PointsPerLine(handle, 3, curves, i));
        EXPECT_NEAR(begin + step * (points - 1), 400e-9, 1e-12);
    }
    ResultsOf("process out.oxd -o again.oxd --no-provenance");
    EXPECT_EQ(ResultsOf("diff out.oxd again.oxd"), ResultsOf("diff out.oxd out.oxd")) << "outputs are replaced";
}

TEST_F(ProcessTest, IsAStepThatCanBeRepeated)
{
    ResultsOf("process sample.oxd -o a.oxd");
    ResultsOf("process a.oxd --kind adhesion --input Spectroscopy/1 --input id:2/Approach --baseline 10nm:2e-7 "
              "--threshold 6 --spring-constant 0.3N/m --name 'Pull-off' -o b.oxd");
    ResultsOf("correct b.oxd -g Processed -c 0 --op mean -o c.oxd");
    ResultsOf("replay c.oxd sample.oxd");
    ResultsOf("replay c.oxd a.oxd");
    const auto items = json::parse(ResultsOf("info --json c.oxd"))["info"].back()["groups"];
    std::map<std::string, std::string> step;
    for (const auto& item : items[1]["items"])
        step[item["name"]] = item["value"];
    EXPECT_EQ(items[0]["items"][4]["value"], "those of the file");
    EXPECT_EQ(step["Processors"] + " " + step["Input 0"] + " " + step["Input 1"], "adhesion 2/1 2/0");
    EXPECT_EQ(step["BaselineMax"] + " " + step["SpringConstant"] + " " + step["DisplayName"], "2e-7 0.3N/m Pull-off");
}

TEST_F(ProcessTest, GivesNoNumberWhereThereIsNone)
{
    WriteOxd(threeLines, StraightLine());
    const std::string slope = "process in.oxd --kind slope --input Scan/Z ";
    const Outcome table =
        ExpectMessage(slope + "--csv", 0, "\"Slope\" of Scan/Z: 2 of 3 curves have no value: 1 because ");
    EXPECT_TRUE(table.results.starts_with("processor,input,line,quantity,value,unit,reason\n"
                                          "\"Slope\",\"Scan/Z\",0,\"Slope\",0.12"))
        << table.results;
    EXPECT_NE(table.results.find("\"Slope\",\"Scan/Z\",1,\"Slope\",,\"V/m\",\""), std::string::npos) << table.results;
    EXPECT_EQ(Run(slope + "-o out.oxd").exitCode, 0);
    const auto handle = Open("out.oxd");
    for (const auto& [line, points] : {std::pair(0U, 1U), {1U, 0U}, {2U, 0U}})
        EXPECT_EQ(GetChannelData_PointsPerLine(handle, 1, 0, line), points) << line;
    EXPECT_EQ(Run(slope + "--range 20m:30m -o none.oxd").exitCode, 0);
    EXPECT_EQ(json::parse(ResultsOf("info --json none.oxd"))["groups"][1]["channels"][0]["validSamples"], 0);
}

TEST_F(ProcessTest, RunsAProcessorAfterThoseWhoseResultsItReads)
{
    WriteOxd(threeLines + twoProcessors + Slope(0, 1, 2) + Slope(1, 0, 1), StraightLine());
    const json results = json::parse(Run("process in.oxd --json").results)["results"];
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0]["processor"], "S1");
    EXPECT_EQ(results[0]["quantities"][0]["channel"], 1);
    EXPECT_EQ(results[1]["input"], "Scan/S1");
    EXPECT_EQ(results[1]["quantities"][0]["channel"], 2);
    EXPECT_EQ(results[1]["quantities"][1]["group"], 1) << "what has no address comes behind all others";

    WriteOxd(threeLines + twoProcessors + Slope(0, 1, 2) + Slope(1, 2, 1), StraightLine());
    ExpectFailure("process in.oxd --json", 4, R"("S0" (ProcessorSet-Slope:0), "S1" (ProcessorSet-Slope:1) wait for)");
    WriteOxd(threeLines + twoProcessors + Slope(0, 0, 0) + Slope(1, 0, 1), StraightLine());
    ExpectFailure("process in.oxd --json", 4, R"("S0" (ProcessorSet-Slope:0) reads what it writes itself)");
    WriteOxd(threeLines + twoProcessors + Slope(0, 0, 1) + Slope(1, 0, 1), StraightLine());
    ExpectFailure("process in.oxd --json", 4, "both write channel 1 of group 0");
}

TEST_F(ProcessTest, OverwritesNeitherAResultNorAMeasuredChannel)
{
    const auto names = [](std::uint64_t group) {
        std::vector<std::string> found;
        const auto handle = Open("out.oxd");
        for (std::uint64_t channel = 0; channel < GetChannelCount(handle, group); ++channel)
            found.push_back(Text(GetChannelData_SignalAxisName, handle, group, channel));
        return found;
    };
    using Names = std::vector<std::string>;
    struct Case
    {
        Addresses outputs;
        Names scan, processed;
        const char* message;
    };
    for (const Case& row : {Case{{{1, 1}, {1, 0}}, {"Z"}, {"S0 error", "S0"}, ""},
                            Case{{{0, 2}, {0, 1}}, {"Z", "S0 error", "S0"}, {}, ""},
                            Case{{{7, 0}, {1, 0}}, {"Z"}, {"S0 error", "S0"}, "not channel 0 of group 7"}}) {
        WriteOxd(threeLines + oneProcessor + Slope(0, 0, row.outputs), StraightLine());
        ExpectMessage("process in.oxd -o out.oxd", 0, row.message);
        EXPECT_EQ(names(0), row.scan) << row.outputs[0].first;
        EXPECT_EQ(names(1), row.processed) << row.outputs[0].first;
    }
    WriteOxd(threeLines + oneProcessor + Slope(0, 0, Addresses{{0, 2}, {0, 1}}), StraightLine());
    Run("process in.oxd -o measured.oxd");
    ExpectMessage("process measured.oxd -o out.oxd", 0, "not channel 2 of group 0, which is measured");
    EXPECT_EQ(names(0).size(), 3U);
    EXPECT_EQ(names(1), (Names{"S0", "S0 error"}));
}

TEST_F(ProcessTest, SaysWhatItCannotRun)
{
    WriteOxd(threeLines + twoProcessors + Slope(0, 0, 1) + Slope(1, 7, 2), StraightLine());
    ExpectMessage("process in.oxd -o out.oxd", 1,
                  R"("S1" (ProcessorSet-Slope:1), channel 7 of group 0: its input is not)");
    EXPECT_EQ(GetChannelCount(Open("out.oxd"), 0), 2U) << "the other one was run";
    WriteOxd(threeLines + twoProcessors + Slope(0, 7, 1) + "Enabled=1\n", StraightLine());
    ExpectFailure("process in.oxd -o none.oxd", 1, "its input is not there");
    EXPECT_FALSE(std::filesystem::exists("none.oxd"));

    WriteOxd(threeLines, StraightLine());
    const std::string slope = "process in.oxd --kind slope --input Scan/0 ";
    for (const auto& [arguments, code, part] :
         {std::tuple("process in.oxd --csv", 1, "has no processor that is enabled"),
          {"process in.oxd", 2, "--output, --csv or --json is required"},
          {"process in.oxd --kind slope --csv", 2, "For --kind, --input is required"},
          {"process in.oxd --input Scan/0 --csv", 2, "For --input, --kind is required"},
          {"process in.oxd --kind slope --input Scan --csv", 2, "is not GROUP/CHANNEL"},
          {"process in.oxd --kind slope --input Scan/Y --csv", 1, R"(no channel "Y" in group "Scan"; it has "Z" (0))"},
          {"process in.oxd --kind indentation --input Scan/0 --csv --range 1:2", 2, "is no parameter of indentation"},
          {"process in.oxd --kind adhesion --input Scan/0 --csv --sensitivity 5nm", 2, R"(has to be in "m/V")"},
          {"process in.oxd --kind adhesion --input Scan/0 --csv --threshold -1", 2,
           "--threshold: in.oxd: Threshold is"},
          {"process in.oxd --kind slope --input Scan/0 -o ./in.oxd", 2, "is the file to read"}})
        ExpectFailure(arguments, code, part);
    const std::string force = "process in.oxd --kind adhesion --input Scan/0 --csv ";
    for (const auto& [arguments, part] :
         {std::pair("--spring-constant 0", "--spring-constant \"0\": is not above 0"),
          {"--sensitivity 0nm/V", "is not above 0"},
          {"--law cone", "is no parameter of adhesion"},
          {"--surface left", "is none of from-data, high, low"},
          {"--baseline-share 2", "--baseline-share: in.oxd: BaselineShare is out of bounds"},
          {"--baseline-share 1m", "has to have no unit"},
          {"--no-clobber", "For --no-clobber, --output is required"},
          {"--strict", "For --strict, --output is required"},
          {"--no-provenance", "For --no-provenance, --output is required"}})
        ExpectFailure(force + arguments, 2, part);
    ExpectFailure(slope + "--csv --range 1nm", 2, "is no range");
    ExpectFailure(slope + "--csv --range 1x:2,5", 2, "--range \"2,5\": is no number with a unit");
    ExpectFailure(slope + "--csv --range 1V:2V", 2, R"(is in "V", and has to be in "m")");

    WriteOxd(threeLines + twoProcessors + Slope(0, 7, 1) + Slope(1, 8, 2), StraightLine());
    const Outcome both = Run("process in.oxd --csv");
    EXPECT_EQ(both.exitCode, 1);
    EXPECT_EQ(std::ranges::count(both.diagnostics, '\n'), 2) << both.diagnostics;
}

TEST_F(ProcessTest, AddsToTheGroupOfResultsWhereverThatIs)
{
    std::string header = threeLines;
    header.insert(header.find("Gr0-Count"), "Gr0-Name=Processed\n");
    WriteOxd(header, StraightLine());
    const auto found = Quantities(Run("process in.oxd --kind slope --input id:0/Z --json -o out.oxd").results);
    EXPECT_EQ(found.at("Slope")["group"], 0);
}

// Curves without noise that were stored in 8 bits.
TEST_F(ProcessTest, TakesNoStepOfRoundingForAdhesion)
{
    for (const auto& [depth, part] : {std::pair(1, "no adhesion above the noise"), {3, "\"A\",3.0000"}}) {
        std::string samples(64, '\0');
        for (std::size_t i = 40; i < samples.size(); ++i)
            samples[i] = static_cast<char>(2 * (i - 39));
        samples[39] = static_cast<char>(-depth);
        WriteOxd(oneChannel + "Version=2\nPoints=64\nLines=1\nSaveBits=8\nDim0Unit=m\nDim0Min=0\nDim0Range=63e-9\n"
                              "Dim2Name=Z\nDim2Unit=m\nDim2Min=-128e-9\nDim2Range=256e-9\n",
                 samples);
        const Outcome outcome = Run("process in.oxd --kind adhesion --input Scan/Z --csv --name A");
        EXPECT_NE((outcome.results + outcome.diagnostics).find(part), std::string::npos) << outcome.results;
    }
}

TEST_F(ProcessTest, LeavesNoSlotEmptyForAProcessorThatFails)
{
    WriteOxd(threeLines + twoProcessors + Slope(0, 0, Addresses{{0, 2}, {-1, -1}}) + Slope(1, 7, 1), StraightLine());
    ExpectMessage("process in.oxd -o out.oxd", 1, "is not channel 2 of group 0, which is measured or out of reach");
    const auto handle = Open("out.oxd");
    EXPECT_EQ(GetChannelCount(handle, 0), 1U);
    EXPECT_EQ(GetChannelCount(handle, 1), 2U);
    EXPECT_EQ(Text(GetChannelData_SignalAxisName, handle, 1, 0), "S0");
}

TEST_F(ProcessTest, SaysWhatIsWrongWithASignalAxisOrALine)
{
    const auto with = [](const std::string& from, const std::string& to) {
        std::string header = threeLines;
        return header.replace(header.find(from), from.size(), to);
    };
    for (const char* const axis : {"Dim2Min=nan", "Dim2Min=-inf", "Dim2Min=1e200"}) {
        WriteOxd(with("Dim2Min=-1", axis), StraightLine());
        for (const char* const kind : {"slope", "adhesion"})
            ExpectFailure("process in.oxd --input Scan/0 --csv --kind " + std::string(kind), 1,
                          "the signal axis of its");
    }
    WriteOxd(with("LineDim2Points=3", "LineDim2Points=9"), StraightLine());
    for (const char* const kind : {"slope", "adhesion", "indentation --sensitivity 1m/V"})
        EXPECT_NE(Run("process in.oxd --trust --csv --input Scan/0 --kind " + std::string(kind))
                      .results.find("\"the line cannot be read\"\n"),
                  std::string::npos);
}

TEST_F(ProcessTest, RunsNoProcessorWithAParameterThatMakesNoSense)
{
    for (const auto& [keys, part] : {std::pair("RangeMin=3,1e-7\nRangeMax=4e-7\n", R"(RangeMin "3,1e-7" makes no)"),
                                     {"RangeMin=0\nRangeMax=nan\n", R"(RangeMax "nan" makes no sense)"},
                                     {"Enabled=maybe\n", R"(Enabled "maybe" makes no sense)"},
                                     {"RangeMin=1\n", "RangeMin is given without RangeMax"},
                                     {"RangeMax=1\n", "RangeMax is given without RangeMin"}}) {
        WriteOxd(threeLines + oneProcessor + Slope(0, 0, 1) + keys, StraightLine());
        ExpectFailure("process in.oxd -o out.oxd", 1, part);
        EXPECT_FALSE(std::filesystem::exists("out.oxd"));
    }
}

TEST_F(ProcessTest, TakesTheSameParametersFromFilesAndOptions)
{
    const std::string sample = ReadBytes("sample.oxd");
    const std::string law = "ContactLaw=2\r\n", maximum = "Indentation maximum";
    const json expected = Quantities(ResultsOf("process sample.oxd --json")).at(maximum)["values"];
    const auto withKey = [&](const std::string& key) {
        std::string bytes = sample;
        WriteBytes("in.oxd", bytes.replace(bytes.find(law), law.size(), key + "\r\n"));
        return Run("process in.oxd --json");
    };
    for (const auto& [option, key] : {std::pair("--law sphere", "ContactLaw=1"),
                                      {"--law line", ""},
                                      {"--law cone --fit-share 0.9", "ContactLaw=2\r\nFitShare=0.9"},
                                      {"--law cone --baseline-share 0.2", "ContactLaw=2\r\nBaselineShare=0.2"},
                                      {"--law cone --threshold 9", "ContactLaw=2\r\nThreshold=9"},
                                      {"--law cone --surface low", "ContactLaw=2\r\nSurface=2"},
                                      {"--law cone --repulsion lowers", "ContactLaw=2\r\nRepulsion=1"}}) {
        const std::string command = "process sample.oxd --kind indentation --input Spectroscopy/0 --json ";
        const json byOption = Quantities(Run(command + option).results).at(maximum)["values"];
        EXPECT_EQ(byOption, Quantities(withKey(key).results).at(maximum)["values"]) << option;
        EXPECT_NE(byOption, expected) << option;
    }
    for (const char* const key : {"ContactLaw=3", "ContactLaw=0.5", "FitShare=0", "Surface=-1", "Repulsion=1e9"}) {
        const Outcome outcome = withKey(key);
        EXPECT_EQ(outcome.exitCode, 1) << key;
        EXPECT_NE(outcome.diagnostics.find(" is out of bounds"), std::string::npos) << outcome.diagnostics;
    }
}

TEST_F(ProcessTest, CannotBeRepeatedOnAChannelWithOtherUnits)
{
    ResultsOf("process sample.oxd --kind slope --input Spectroscopy/0 --range 310nm:390nm -o out.oxd");
    std::string bytes = ReadBytes("sample.oxd");
    const std::string unit = "Dim0Unit=m";
    WriteBytes("other.oxd", bytes.replace(bytes.find(unit, bytes.find("[DataSet-2:0]")), unit.size(), "Dim0Unit=V"));
    const Outcome outcome = Run("replay out.oxd other.oxd");
    EXPECT_EQ(outcome.exitCode, 1) << outcome.diagnostics;
    EXPECT_NE(outcome.results.find("step 1 of 1 was taken on other samples"), std::string::npos) << outcome.results;
}

TEST_F(ProcessTest, UnderstandsPrefixesOfUnits)
{
    const std::string sample = ReadBytes("sample.oxd");
    // The first channel of curves, with these texts in place of those before them.
    const auto write = [&](const std::vector<std::pair<std::string, std::string>>& changes) {
        std::string bytes = sample;
        for (const auto& [from, to] : changes)
            bytes.replace(bytes.find(from, bytes.find("[DataSet-2:0]")), from.size(), to);
        WriteBytes("in.oxd", bytes);
    };
    const auto find = [](const std::string& file, const std::string& arguments, const std::string& name) {
        return Quantities(ResultsOf("process " + file + " --input Spectroscopy/0 --json " + arguments)).at(name);
    };
    const auto expectSame = [&](const std::string& arguments, const std::string& name, const std::string& unit,
                                double factor) {
        const json found = find("in.oxd", arguments, name), expected = find("sample.oxd", arguments, name);
        EXPECT_EQ(found["unit"], unit);
        for (std::size_t i = 0; i < curveCount; ++i) {
            const double value = factor * expected["values"][i].get<double>();
            EXPECT_NEAR(found["values"][i].get<double>(), value, 1e-6 * std::fabs(value)) << arguments;
        }
    };
    const std::string range = "--kind slope --range 310.2nm:389.9nm";
    const std::string indentation = "--kind indentation --baseline 10.1nm:150.2nm";
    write({{"Dim0Unit=m", "Dim0Unit=nm"}, {"Dim0Range=4e-07", "Dim0Range=400"}});
    expectSame(range, "Slope", "m/nm", 1e-9);
    expectSame(indentation, "Indentation contact point", "m", 1);
    EXPECT_EQ(find("in.oxd", range, "Slope"), find("in.oxd", "--kind slope --range 310.2:389.9", "Slope"));
    write({{"Dim2Unit=m", "Dim2Unit=nm"}, {"Dim2Range=4e-07", "Dim2Range=400"}, {"Dim2Min=-2e-07", "Dim2Min=-200"}});
    expectSame(range, "Slope", "nm/m", 1e9);
    expectSame(indentation, "Indentation contact point", "m", 1);
    expectSame("--kind adhesion --name A", "A error", "N", 1);
    write({{"Dim2Unit=m", "Dim2Unit=mV"}, {"Dim2Range=4e-07", "Dim2Range=8000"}, {"Dim2Min=-2e-07", "Dim2Min=-4000"}});
    expectSame(indentation + " --sensitivity 50nm/V", "Indentation maximum error", "m", 1);
    expectSame(indentation, "Indentation contact point", "m", 1);
}

TEST_F(ProcessTest, ClipsNoCurveOfALineThatIsLongerThanTheOthers)
{
    std::string bytes = ReadBytes("sample.oxd");
    const auto channel = bytes.find("[DataSet-2:0]");
    bytes.replace(bytes.find("Version=2", channel), 9, "Version=3\r\nLineDim3Range=4e-06\r\nLineDim3Min=0");
    WriteBytes("in.oxd", bytes);
    const std::string command = "process in.oxd --kind indentation --input Spectroscopy/0 ";
    const auto found = Quantities(Run(command + "--json").results);
    const double largest = found.at("Indentation maximum")["values"][3].get<double>();
    EXPECT_EQ(Run(command + "-o out.oxd").exitCode, 0);
    const auto handle = Open("out.oxd");
    std::vector<double> curve(GetChannelData_Points(handle, 3, 0));
    GetChannelData_LineReal(handle, 3, 0, 3, 0, curve.data());
    curve.resize(GetChannelData_PointsPerLine(handle, 3, 0, 3));
    EXPECT_GT(largest, 1e-6) << "more than the way of the other lines";
    EXPECT_NEAR(*std::ranges::max_element(curve), largest, 1e-12);
}

TEST_F(ProcessTest, LosesNoViewThatIsAChannel)
{
    WriteOxd(threeLines + "[SetView]\nViewCount=1\nView0=C\n", StraightLine());
    EXPECT_EQ(Run("process in.oxd --kind slope --input Scan/0 -o out.oxd").diagnostics.find("section of views"),
              std::string::npos);
}

TEST_F(ProcessTest, SaysWhichCalibrationItCannotUse)
{
    const std::string sample = ReadBytes("sample.oxd");
    const auto withSpring = [&](const std::string& value) {
        std::string bytes = sample;
        const std::string old = "Spring constant=0.2 N/m";
        WriteBytes("in.oxd", bytes.replace(bytes.find(old), old.size(), "Spring constant=" + value));
        return Run("process in.oxd --json");
    };
    const auto force = [](const std::string& document) {
        return Quantities(document).at("Adhesion")["values"][0].get<double>();
    };
    const double expected = force(ResultsOf("process sample.oxd --json"));
    for (const char* const same : {"0.2 nN/nm", "200 pN/nm", "200mN/m"}) {
        const Outcome outcome = withSpring(same);
        EXPECT_EQ(outcome.diagnostics, "") << same;
        EXPECT_NEAR(force(outcome.results), expected, 1e-12 * expected) << same;
    }
    for (const char* const unusable : {"about 0.9", "-1 N/m", "0.2 N", "0"}) {
        const Outcome outcome = withSpring(unusable);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(std::ranges::count(outcome.diagnostics, '\n'), 1) << "once: " << outcome.diagnostics;
        EXPECT_NE(outcome.diagnostics.find(std::string("Tool/Spring constant is \"") + unusable), std::string::npos);
    }
}

TEST_F(ProcessTest, PreviewsAndKeepsTheOldFile)
{
    WriteBytes("old.oxd", "old");
    ExpectFailure("process sample.oxd -o old.oxd --no-clobber", 5, "File exists");
    const std::string preview = ResultsOf("process sample.oxd --dry-run -o old.oxd");
    EXPECT_NE(preview.find("+Gr3-Name=Processed\n"), std::string::npos);
    EXPECT_NE(preview.find("no samples change\nold.oxd: "), std::string::npos);
    EXPECT_EQ(ReadBytes("old.oxd"), "old");
}

#ifdef OXD_SCHEMA_CHECK
TEST_F(ProcessTest, PrintsJsonThatFitsItsSchema)
{
    WriteBytes("out.json", ResultsOf("process sample.oxd --json"));
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what runs programs
    EXPECT_EQ(std::system(OXD_SCHEMA_CHECK " '" OXD_SCHEMAS "/process.schema.json' out.json"), 0);
}
#endif
