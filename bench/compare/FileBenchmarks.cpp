// Benchmarks of opening, reading and saving whole files.
#include "compare/Baseline.h"
#include "compare/Benchmark.h"
#include "compare/Lines.h"
#include "compare/Memory.h"
#include "compare/Peers.h"
#include "support/Oxd.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <utility>

namespace bench {

namespace {

constexpr std::uint64_t smallFileChannels = 8;
constexpr Shape smallImage{256, 256, 16};

// Each benchmark writes its image anew, so that nothing of an earlier one is left in memory or on disk.
std::string MakeImage(const Settings& settings, const Shape& shape)
{
    std::string path = settings.scratch->Path("image.oxd");
    WriteOxd(path, shape);
    return path;
}

std::string MakePeerImage(const Settings& settings, const CImagePeer& peer, const Shape& shape)
{
    std::string path = settings.scratch->Path("image." + peer.Name());
    CLines lines(shape, Values::Raw);
    peer.Write(path, shape, [&](std::uint64_t line) { return lines.Stored(line); });
    return path;
}

// Covers every 61st line, with each sample multiplied by `factor`.
template <class T>
double ChecksumOfLines(const T* samples, const Shape& shape, std::int32_t factor)
{
    CChecksum checksum;
    std::vector<std::int32_t> line(shape.points);
    for (std::uint64_t i = 0; i < shape.lines; i += 61) {
        std::transform(samples + i * shape.points, samples + (i + 1) * shape.points, line.begin(),
                       [&](T sample) { return sample * factor; });
        checksum.Add(line);
    }
    return checksum.Value();
}

Contender OpenOurs(const std::string& path, const Shape& shape)
{
    const auto file = std::make_shared<COxd>();
    return {ours, [=] { *file = COxd::Open(path); },
            [=] {
                const double sum = ChecksumOf(**file, shape, 61);
                file->Close();
                return sum;
            }};
}

Contender OpenBaseline(const std::string& path, const Shape& shape)
{
    const auto samples = std::make_shared<baseline::Samples>();
    return {baselineName, [=] { *samples = baseline::Load(path, shape.Samples(), shape.bits); },
            [=] {
                const double sum = ChecksumOfLines(samples->get(), shape, 1);
                samples->reset();
                return sum;
            }};
}

template <class T, class Load>
Contender OpenPeer(const Settings& settings, const std::shared_ptr<const CImagePeer>& peer, const Shape& shape,
                   Load load)
{
    const std::string path = MakePeerImage(settings, *peer, shape);
    const auto samples = std::make_shared<std::unique_ptr<T[]>>();
    return {peer->Name(),
            [=] {
                samples->reset(new T[shape.Samples()]); // not initialised
                ((*peer).*load)(path, shape, samples->get());
            },
            [=] {
                const double sum = ChecksumOfLines(samples->get(), shape, 1 << (30 - shape.bits));
                samples->reset();
                return sum;
            }};
}

enum class Compared
{
    WithBaseline,
    WithWideningPeers, // which return samples of 32 bits
    WithStoringPeers,  // which return samples in the stored type
};

auto Open(Shape fullShape, Compared compared)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = MakeImage(settings, shape);
        std::vector<Contender> contenders{OpenOurs(path, shape), OpenBaseline(path, shape)};
        for (const auto& peer : ImagePeers()) {
            if (compared == Compared::WithWideningPeers)
                contenders.push_back(OpenPeer<std::int32_t>(settings, peer, shape, &CImagePeer::Load));
            else if (compared == Compared::WithStoringPeers)
                contenders.push_back(OpenPeer<std::int16_t>(settings, peer, shape, &CImagePeer::LoadStored));
        }
        return contenders;
    };
}

auto Close(Shape fullShape)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = MakeImage(settings, shape);
        const auto nothing = [] { return 0.0; };
        const auto file = std::make_shared<COxd>();
        const auto samples = std::make_shared<baseline::Samples>();
        return std::vector<Contender>{{ours, [=] { file->Close(); }, nothing, [=] { *file = COxd::Open(path); }},
                                      {baselineName, [=] { samples->reset(); }, nothing,
                                       [=] { *samples = baseline::Load(path, shape.Samples(), shape.bits); }}};
    };
}

auto Memory(Shape fullShape)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = MakeImage(settings, shape);
        const auto bytes = std::make_shared<std::uint64_t>();
        return std::vector<Contender>{
            {ours, [=] { *bytes = MemoryTakenBy([&] { return OpenOxdFile(path.c_str()) != 0; }); }, [] { return 0.0; },
             [] {}, [=] { return static_cast<double>(*bytes) / static_cast<double>(4 * shape.Samples()); }}};
    };
}

// Opens the file, sums up all lines, and closes it.
auto WalkLines(Shape fullShape)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = MakeImage(settings, shape);
        const auto sum = std::make_shared<double>();
        const auto finish = [=] { return *sum; };
        std::vector<Contender> contenders{{ours, [=] { *sum = ChecksumOf(*COxd::Open(path), shape); }, finish},
                                          {baselineName,
                                           [=] {
                                               CChecksum checksum;
                                               const auto samples = baseline::Load(path, shape.Samples(), shape.bits);
                                               for (std::uint64_t i = 0; i < shape.lines; ++i)
                                                   checksum.Add({samples.get() + i * shape.points, shape.points});
                                               *sum = checksum.Value();
                                           },
                                           finish}};
        return contenders;
    };
}

auto SmallFiles(std::uint64_t fullCount)
{
    return [=](const Settings& settings) {
        const std::uint64_t count = fullCount / settings.divisor;
        for (std::uint64_t i = 0; i < count; ++i)
            WriteOxd(settings.scratch->Path(std::to_string(i)), smallImage, smallFileChannels, 60);
        const auto sum = std::make_shared<CChecksum>();
        const auto forEachFile = [=, scratch = settings.scratch](auto use) {
            *sum = CChecksum();
            for (std::uint64_t i = 0; i < count; ++i)
                use(scratch->Path(std::to_string(i)), i % smallImage.lines);
        };
        const auto finish = [=] { return sum->Value(); };
        const auto ourFile = [=](const std::string& path, std::uint64_t line) {
            const COxd file = COxd::Open(path);
            std::array<std::int32_t, smallImage.points> samples{};
            for (std::uint64_t c = 0; c < smallFileChannels; ++c) {
                GetChannelData_LineRaw(*file, 0, c, line, 0, samples.data());
                sum->Add(samples);
            }
        };
        const auto baselineFile = [=](const std::string& path, std::uint64_t line) {
            const auto samples = baseline::Load(path, smallFileChannels * smallImage.Samples(), smallImage.bits);
            for (std::uint64_t c = 0; c < smallFileChannels; ++c)
                sum->Add({samples.get() + (c * smallImage.lines + line) * smallImage.points, smallImage.points});
        };
        return std::vector<Contender>{{ours, [=] { forEachFile(ourFile); }, finish},
                                      {baselineName, [=] { forEachFile(baselineFile); }, finish}};
    };
}

double ChecksumOfFile(const std::string& path, const Shape& shape)
{
    return ChecksumOf(*COxd::Open(path), shape, 61);
}

enum class Change
{
    Nothing,
    EveryLine,
};

auto Save(Shape fullShape, Change change)
{
    return [=](const Settings& settings) {
        const Shape shape = Smaller(fullShape, settings);
        const std::string path = MakeImage(settings, shape);
        const std::string saved = settings.scratch->Path("saved.oxd");
        const auto file = std::make_shared<COxd>();
        const auto samples = std::make_shared<baseline::Samples>(baseline::Load(path, shape.Samples(), shape.bits));
        const auto finish = [=] {
            file->Close();
            return ChecksumOfFile(saved, shape);
        };
        const auto open = [=] {
            *file = COxd::Open(path);
            for (std::uint64_t i = 0; change == Change::EveryLine && i < shape.lines; ++i)
                SetChannelData_LineRaw(**file, 0, 0, i, RawLine(shape, i).data());
            CheckLibrary();
        };
        const std::string header = HeaderOf(shape, 1);
        return std::vector<Contender>{
            {ours, [=] { file->SaveAs(saved); }, finish, open},
            {baselineName, [=] { baseline::Save(saved, header, samples->get(), shape.Samples(), shape.bits); },
             finish}};
    };
}

} // namespace

std::vector<Benchmark> FileBenchmarks()
{
    constexpr Shape large{16'384, 16'384, 16};
    constexpr Shape bytes{16'384, 8192, 8};
    constexpr Shape words{16'384, 4096, 32};
    constexpr Shape narrow{128, 524'288, 16};
    const std::vector<Goal> none;
    using enum Against;
    return {
        {"open 512 MiB of 16 bits",
         "ms",
         milliseconds,
         {{Baseline, 0.60}, {BestPeer, 1 / 1.6}},
         Open(large, Compared::WithWideningPeers)},
        {"the same, peers as stored", "ms", milliseconds, none, Open(large, Compared::WithStoringPeers)},
        {"open 128 MiB of 8 bits", "ms", milliseconds, {{Baseline, 0.40}}, Open(bytes, Compared::WithBaseline)},
        {"open 256 MiB of 32 bits", "ms", milliseconds, {{Baseline, 1.0}}, Open(words, Compared::WithBaseline)},
        {"open lines of 128 points", "ms", milliseconds, {{Baseline, 0.60}}, Open(narrow, Compared::WithBaseline)},
        {"close 512 MiB of 16 bits", "ms", milliseconds, {{Baseline, 2.0}}, Close(large)},
        {"memory, 16 bits", "of 4 B/sample", 1, {{Figure, 0.55}}, Memory(large)},
        {"memory, 8 bits", "of 4 B/sample", 1, {{Figure, 0.30}}, Memory(bytes)},
        {"open, walk all lines, close", "ms", milliseconds, {{Baseline, 0.65}}, WalkLines(large)},
        {"2 000 small files", "ms", milliseconds, {{Baseline, 0.70}}, SmallFiles(2000)},
        {"save 512 MiB unchanged", "ms", milliseconds, {{Baseline, 0.75}}, Save(large, Change::Nothing)},
        {"save 512 MiB, every line changed", "ms", milliseconds, {{Baseline, 1.10}}, Save(large, Change::EveryLine)},
    };
}

} // namespace bench
