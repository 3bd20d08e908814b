// Benchmarks of files that are written and read line by line.
#include "compare/Baseline.h"
#include "compare/Benchmark.h"
#include "compare/Lines.h"
#include "compare/Peers.h"
#include "support/Oxd.h"

#include <memory>

namespace bench {

namespace {

void WriteOurs(const std::string& path, const Shape& shape, Values values)
{
    const COxd file = COxd::CreateImage(path, shape);
    for (std::uint64_t i = 0; i < shape.lines; ++i) {
        if (values == Values::Raw)
            SetChannelData_LineRaw(*file, 0, 0, i, RawLine(shape, i).data());
        else
            SetChannelData_LineReal(*file, 0, 0, i, RealLine(shape, i).data());
    }
    file.SaveAs(path);
}

double ReadOurs(const std::string& path, const Shape& shape, Values values)
{
    const COxd file = COxd::Open(path);
    if (values == Values::Raw)
        return ChecksumOf(*file, shape);
    CChecksum checksum;
    std::vector<double> line(shape.points);
    for (std::uint64_t i = 0; i < shape.lines; ++i) {
        GetChannelData_LineReal(*file, 0, 0, i, 0, line.data());
        checksum.Add(line);
    }
    return checksum.Value();
}

// Creates a file line by line, opens it again, and sums up its lines.
auto WriteAndRead(Shape fullShape, Values values)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = settings.scratch->Path("lines.");
        const auto sum = std::make_shared<double>();
        const auto lines = std::make_shared<CLines>(shape, values);
        const auto finish = [=] { return lines->TakeChecksum(); };
        std::vector<Contender> contenders{
            {ours,
             [=] {
                 WriteOurs(path + "oxd", shape, values);
                 *sum = ReadOurs(path + "oxd", shape, values);
             },
             [=] { return *sum; }},
            {baselineName,
             [=] {
                 baseline::SaveLines(path, HeaderOf(shape, 1), shape, [&](std::uint64_t i) { return lines->Raw(i); });
                 baseline::LoadLines(path, shape, [&](auto line) { lines->AddRaw(line); });
             },
             finish}};
        for (const auto& peer : ImagePeers()) {
            const auto writeAndRead = [=, file = path + peer->Name()] {
                peer->Write(file, shape, [&](std::uint64_t i) { return lines->Stored(i); });
                peer->Read(file, shape, [&](auto line) { lines->AddStored(line); });
            };
            contenders.push_back({peer->Name(), writeAndRead, finish});
        }
        return contenders;
    };
}

} // namespace

std::vector<Benchmark> LineFileBenchmarks()
{
    constexpr Shape square{4096, 4096, 16};
    using enum Against;
    return {
        {"write and read lines, raw",
         "ms",
         milliseconds,
         {{Baseline, 1.3}, {BestPeer, 1.0}},
         WriteAndRead(square, Values::Raw)},
        {"write and read lines, real",
         "ms",
         milliseconds,
         {{Baseline, 1.3}, {BestPeer, 1.0}},
         WriteAndRead(square, Values::Real),
         1e-9},
    };
}

} // namespace bench
