// Fault injection: every allocation and every system call that opening, editing and saving make fails once. Each
// failure must be reported, lose nothing and leak nothing, and the same call must give the right result when it is
// repeated.
#include "Interpose.h"

#include "support/Bytes.h"
#include "support/Describe.h"
#include "support/Edits.h"
#include "support/FileChecks.h"
#include "support/Seeds.h"

#include <VELOxdDll.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <new>
#include <string>

namespace fs = std::filesystem;
using faults::Effect;
using faults::Kind;

namespace {

constexpr const char* oldBytes = "old"; // content of the file that a save replaces
constexpr const char* noFile = "none";  // what stands for the content of a file that does not exist
constexpr fs::perms privately = fs::perms::owner_read | fs::perms::owner_write;

fs::path folder;
std::uint64_t handle = 0;
std::size_t nextEdit = 0;
std::string failure;

struct Scenario
{
    const char* name;
    std::function<void()> prepare;
    std::function<void()> act; // fails with a stored error; may continue from where it failed when called again
    std::function<std::string()> result; // compared with the result without faults
    // Whether a file that cannot be read while its header is searched may open as one without a header.
    bool mayOpenEmpty = false;
    std::string resultWithoutMemory{}; // the result while `act` fails for lack of memory, if that is certain
};

std::string FileName(const char* name)
{
    return (folder / name).string();
}

void MakeDataSet()
{
    handle = CreateOxdFile(FileName("made.oxd").c_str());
    ApplyEdits(handle);
    WriteBytes(FileName("made.oxd"), oldBytes);
    VELGetLastError();
}

Scenario Opening(const char* name, std::string_view bytes)
{
    const std::string path = FileName(name);
    return {name, [=] { WriteBytes(path, bytes); }, [=] { handle = OpenOxdFile(path.c_str()); },
            [] { return Describe(handle); }, true};
}

// The file has enough samples for memory that is mapped from the system, and for more than one read.
Scenario OpeningLarge()
{
    static const std::string bytes =
        "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=C\r\n[C]\r\nVersion=2\r\n"
        "Points=1024\r\nLines=512\r\nSaveBits=32\r\n\r\n#!" +
        std::string(std::size_t{2} << 20U, 's');
    Scenario scenario = Opening("open large", bytes);
    scenario.result = [] {
        return std::to_string(GetChannelData_Lines(handle, 0, 0)) + " lines, the last sample " +
               std::to_string(GetChannelData_PixelRaw(handle, 0, 0, 1023, 511, 0));
    };
    return scenario;
}

// Whichever failure is stored, its text names the reason.
Scenario FailingToOpen()
{
    Scenario scenario = Opening("fail to open", "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=C\r\n"
                                                "[C]\r\nVersion=9\r\n\r\n#!");
    scenario.act = [open = scenario.act] {
        open();
        failure = VELGetLastError();
    };
    scenario.result = [] {
        constexpr std::array reasons{"Version: 9", "bad_alloc", "Cannot allocate memory"};
        const auto isNamed = [](const char* reason) { return failure.find(reason) != std::string::npos; };
        return handle == 0 && std::ranges::any_of(reasons, isNamed) ? "failed" : "no reason: " + failure;
    };
    scenario.mayOpenEmpty = false;
    return scenario;
}

// Creates a data set, makes every change and then every query.
void CreateEditAndRead()
{
    if (handle == 0)
        handle = CreateOxdFile(FileName("made.oxd").c_str());
    if (handle != 0)
        ChangeOxdFilename(handle, FileName("renamed.oxd").c_str());
    while (nextEdit < Edits().size() && !VELHasLastError()) {
        Edits()[nextEdit](handle);
        nextEdit += VELHasLastError() ? 0 : 1; // a failed edit is repeated
    }
    if (!VELHasLastError())
        Describe(handle);
}

Scenario Saving()
{
    return {"save", MakeDataSet, [] { SaveOxdFile(handle); }, [] { return ReadBytes(FileName("made.oxd")); },
            false,  oldBytes};
}

std::vector<Scenario> Scenarios(Kind kind)
{
    std::vector<Scenario> all{Opening("open version 1", Seeds()[0].bytes), Opening("open version 2", Seeds()[1].bytes),
                              OpeningLarge(), Saving()};
    if (kind == Kind::File)
        return all;
    const auto reset = [] { handle = nextEdit = 0; };
    all.push_back({"create, edit and read", reset, CreateEditAndRead, [] { return SaveBytes(handle); }});
    all.push_back(FailingToOpen());
    return all;
}

struct Outcome
{
    bool struck = false;         // whether a fault was injected
    const char* fault = nullptr; // what went wrong, if anything
    std::string result{};
};

// Returns whether the scenario succeeded. Reading the result may run out of memory as well.
bool Try(const Scenario& scenario)
try {
    VELGetLastError();
    scenario.act();
    return !VELHasLastError();
} catch (const std::bad_alloc&) {
    return false;
}

std::ptrdiff_t OpenDescriptors()
{
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

Outcome Run(const Scenario& scenario, const faults::Plan& plan, const std::string& expected)
{
    Outcome outcome;
    const auto blocks = faults::LiveBlocks();
    const auto descriptors = OpenDescriptors();
    scenario.prepare();
    faults::Arm(plan);
    const bool done = Try(scenario);
    const faults::Count count = faults::Disarm();
    outcome.struck = count.struck;
    if (!done && plan.kind == Kind::Memory && !scenario.resultWithoutMemory.empty() &&
        scenario.result() != scenario.resultWithoutMemory)
        outcome.fault = "harms the old file";
    const bool openedEmpty = done && scenario.mayOpenEmpty && count.struckRead && GetGroupCount(handle) == 0;
    if ((!done || openedEmpty) && !Try(scenario))
        outcome.fault = "fails again";
    outcome.result = scenario.result();
    if (!expected.empty() && outcome.result != expected)
        outcome.fault = "gives another result";
    CloseAll();
    const int resultBlocks = outcome.result.capacity() > 15 ? 1 : 0; // short texts are kept in the string object
    if (faults::LiveBlocks() - blocks != resultBlocks)
        outcome.fault = "leaks memory";
    if (OpenDescriptors() != descriptors)
        outcome.fault = "leaks a descriptor";
    return outcome;
}

// Injects a fault at every call in turn, until there are no more calls. Returns the number of failures; a sweep without
// any call counts as one.
int Sweep(const char* scenario, const char* effect, const std::function<Outcome(std::uint64_t)>& run)
{
    std::uint64_t points = 0;
    int failures = 0;
    for (bool struck = true; struck; ++points) {
        const Outcome outcome = run(points);
        struck = outcome.struck;
        if (outcome.fault && ++failures <= 5)
            std::printf("  point %ju: %s (%s)\n", std::uintmax_t{points}, outcome.fault, VELGetLastError());
    }
    std::printf("%s, %s: %ju points, %d failures\n", scenario, effect, std::uintmax_t{points - 1}, failures);
    return points > 1 ? failures : failures + 1;
}

int SweepAll(Kind kind, const std::map<const char*, Effect>& effects)
{
    int failures = 0;
    for (const Scenario& scenario : Scenarios(kind)) {
        Run(scenario, {kind}, {}); // allocates what is allocated only once
        const std::string expected = Run(scenario, {kind}, {}).result;
        for (const auto& [name, effect] : effects)
            failures += Sweep(scenario.name, name, [&, effect = effect](std::uint64_t point) {
                return Run(scenario, {kind, point, effect}, expected);
            });
    }
    return failures;
}

// Saves in a child process that the plan kills. The result is the content of the file that is left.
Outcome KillSaving(const faults::Plan& plan)
{
    const Scenario saving = Saving();
    saving.prepare();
    fs::permissions(FileName("made.oxd"), privately);
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        faults::Arm(plan);
        saving.act();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    CloseAll();
    return {WIFSIGNALED(status), nullptr, fs::exists(FileName("made.oxd")) ? saving.result() : noFile};
}

// Whether nobody but the owner has access to the file, if there is one.
bool IsPrivate(const fs::path& file)
{
    const fs::file_status left = fs::status(file);
    return !fs::exists(left) || (left.permissions() & ~privately) == fs::perms::none;
}

// A killed save leaves the old file, no file, or the beginning of the new one, and opens none of them to others.
int SweepKills(Effect effect, const char* effectName)
{
    const std::string whole = KillSaving({Kind::File}).result;
    return Sweep("save", effectName, [&](std::uint64_t point) {
        Outcome outcome = KillSaving({Kind::File, point, effect});
        const std::string& left = outcome.result;
        const bool isAllowed = outcome.struck ? left == noFile || left == oldBytes || whole.starts_with(left)
                                              : left == whole && whole != noFile && whole != oldBytes;
        if (!isAllowed)
            outcome.fault = "leaves a damaged file";
        else if (!IsPrivate(FileName("made.oxd")))
            outcome.fault = "opens the file to others";
        return outcome;
    });
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    folder = argv[2];
    fs::create_directories(folder);
    const std::string_view what = argv[1];
    int failures = 1;
    if (what == "memory")
        failures =
            SweepAll(Kind::Memory, {{"no memory once", Effect::Fail}, {"no memory from then on", Effect::FailOn}});
    else if (what == "files")
        failures = SweepAll(Kind::File, {{"a call fails", Effect::Fail},
                                         {"all calls fail from then on", Effect::FailOn},
                                         {"half of the bytes", Effect::Shorten},
                                         {"interrupted", Effect::Interrupt}});
    else if (what == "kills")
        failures =
            SweepKills(Effect::Kill, "killed before a call") + SweepKills(Effect::KillWithin, "killed within a write");
    fs::remove_all(folder);
    return failures > 0 ? 1 : 0;
}
