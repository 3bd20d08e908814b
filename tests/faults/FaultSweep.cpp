// Every allocation and every call of the system that opening, editing and saving makes fails once: each failure is
// stored, nothing is lost or leaks, and the same call gives the right result when it is made again.
#include "Interpose.h"

#include "support/Bytes.h"
#include "support/Describe.h"
#include "support/Edits.h"
#include "support/FileChecks.h"
#include "support/Seeds.h"

#include <VELOxdDll.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
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

constexpr const char* oldBytes = "old"; // of the file that is saved over
constexpr fs::perms privately = fs::perms::owner_read | fs::perms::owner_write;

fs::path folder;
std::uint64_t handle = 0;
std::size_t nextEdit = 0;

struct Scenario
{
    const char* name;
    std::function<void()> prepare;
    std::function<bool()> act;           // whether it is done; if not, it may go on from where it is
    std::function<std::string()> result; // what it was done for
    // A file that cannot be read where its header is sought counts as one without a header.
    bool mayOpenEmpty = false;
    std::string withoutMemory{}; // the result when there was none to act with, if that is sure
};

std::string FileName(const char* name)
{
    return (folder / name).string();
}

void MakeDataSet()
{
    handle = CreateOxdFile(FileName("made.oxd").c_str());
    for (const Edit edit : Edits())
        edit(handle);
    WriteBytes(FileName("made.oxd"), oldBytes);
    VELGetLastError();
}

Scenario Opening(const char* name, std::string_view bytes)
{
    const std::string path = FileName(name);
    return {name, [=] { WriteBytes(path, bytes); },
            [=] {
                handle = OpenOxdFile(path.c_str());
                return handle != 0;
            },
            [] { return Describe(handle); }, true};
}

// Enough samples for memory that comes from the system by pages, and for more than one read.
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

bool Saves()
{
    SaveOxdFile(handle);
    return !VELHasLastError();
}

// All that can be changed, and all that can be read.
bool EditsAndReads()
{
    for (; nextEdit < Edits().size(); ++nextEdit) {
        Edits()[nextEdit](handle);
        if (VELHasLastError())
            return false;
    }
    Describe(handle);
    return !VELHasLastError();
}

constexpr std::string_view unknownVersion = "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=C\r\n"
                                            "[C]\r\nVersion=9\r\n\r\n#!";

Scenario Saving()
{
    return {"save", MakeDataSet, Saves, [] { return ReadBytes(FileName("made.oxd")); }, false, oldBytes};
}

std::vector<Scenario> Scenarios(Kind kind)
{
    std::vector<Scenario> all{Opening("open version 1", Seeds()[0].bytes), Opening("open version 2", Seeds()[1].bytes),
                              OpeningLarge(), Saving()};
    if (kind == Kind::File)
        return all;
    all.push_back({"edit and read",
                   [] {
                       nextEdit = 0;
                       handle = CreateOxdFile(FileName("made.oxd").c_str());
                   },
                   EditsAndReads, [] { return SaveBytes(handle); }});
    all.push_back({"create and rename", [] { handle = 0; },
                   [] {
                       if (handle == 0)
                           handle = CreateOxdFile(FileName("made.oxd").c_str());
                       if (handle != 0)
                           ChangeOxdFilename(handle, FileName("renamed.oxd").c_str());
                       return !VELHasLastError();
                   },
                   [] { return std::to_string(handle); }});
    all.push_back({"close", MakeDataSet,
                   [] {
                       CloseOxdFile(handle);
                       return !VELHasLastError();
                   },
                   [] { return std::string(); }});
    // Whichever failure is stored, it says what it is.
    all.push_back({"fail to open", [] { WriteBytes(FileName("bad.oxd"), unknownVersion); },
                   [] {
                       handle = OpenOxdFile(FileName("bad.oxd").c_str());
                       return handle == 0 && VELHasLastError();
                   },
                   [] {
                       std::string text = VELGetLastError();
                       for (const char* const reason : {"Version: 9", "bad_alloc", "Cannot allocate memory"}) {
                           if (text.find(reason) != std::string::npos)
                               return std::string("failed");
                       }
                       return text;
                   }});
    return all;
}

struct Outcome
{
    faults::Count count;
    std::string result;
    const char* fault = nullptr; // what should not be
};

// Whether it is done. Our own reading may run out of memory, too, and then it may be made again.
bool Try(const Scenario& scenario, Outcome& outcome)
{
    VELGetLastError();
    try {
        if (scenario.act())
            return true;
        if (!VELHasLastError())
            outcome.fault = "fails without an error";
    } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch): not done
    }
    return false;
}

void CloseAll()
{
    for (std::uint64_t used = 1; used < 8; ++used)
        CloseOxdFile(used);
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
    const bool done = Try(scenario, outcome);
    outcome.count = faults::Disarm();
    if (!done && plan.kind == Kind::Memory && !scenario.withoutMemory.empty() &&
        scenario.result() != scenario.withoutMemory)
        outcome.fault = "harms the old file";
    const bool silent = done && scenario.mayOpenEmpty && outcome.count.struckRead && GetGroupCount(handle) == 0;
    if ((!done || silent) && !Try(scenario, outcome))
        outcome.fault = "fails again";
    outcome.result = scenario.result();
    if (!expected.empty() && outcome.result != expected)
        outcome.fault = "gives another result";
    CloseAll();
    if (faults::LiveBlocks() - blocks != (outcome.result.capacity() > 15 ? 1 : 0))
        outcome.fault = "leaks memory";
    if (OpenDescriptors() != descriptors)
        outcome.fault = "leaks a descriptor";
    return outcome;
}

// Strikes at every call in turn, until there are no more; the number of failures.
int Sweep(const Scenario& scenario, Kind kind, Effect effect, const char* effectName)
{
    Run(scenario, {kind}, {}); // what is made once is made here
    const std::string expected = Run(scenario, {kind}, {}).result;
    std::uint64_t points = 0;
    int failures = 0;
    for (bool struck = true; struck; ++points) {
        const Outcome outcome = Run(scenario, {kind, points, effect}, expected);
        struck = outcome.count.struck;
        if (outcome.fault && ++failures <= 5)
            std::printf("  point %ju: %s (%s)\n", std::uintmax_t{points}, outcome.fault, VELGetLastError());
    }
    std::printf("%s, %s: %ju points, %d failures\n", scenario.name, effectName, std::uintmax_t{points - 1}, failures);
    return failures;
}

int SweepAll(Kind kind, const std::map<const char*, Effect>& effects)
{
    int failures = 0;
    for (const Scenario& scenario : Scenarios(kind)) {
        for (const auto& [name, effect] : effects)
            failures += Sweep(scenario, kind, effect, name);
    }
    return failures;
}

// Ends a process within its save; the file that it leaves, or nothing when there is none.
struct Killed
{
    bool atAll = false;
    bool hasFile = false;
    fs::perms permissions = fs::perms::none;
    std::string bytes;
};

Killed KillSaving(const faults::Plan& plan)
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
    const fs::file_status left = fs::status(FileName("made.oxd"));
    return {WIFSIGNALED(status), fs::exists(left), left.permissions(), ReadBytes(FileName("made.oxd"))};
}

// What is left is the old file, none, or the beginning of the new one, and is open to nobody else.
int SweepKills(Effect effect, const char* effectName)
{
    const std::string whole = KillSaving({Kind::File}).bytes;
    std::uint64_t points = 0;
    int failures = 0;
    for (bool killed = true; killed; ++points) {
        const Killed left = KillSaving({Kind::File, points, effect});
        killed = left.atAll;
        const bool isPrivate = (left.permissions & ~privately) == fs::perms::none;
        const bool good = !left.hasFile || (isPrivate && (left.bytes == oldBytes || whole.starts_with(left.bytes)));
        if (!good || (!killed && left.bytes != whole))
            std::printf("  point %ju: left %zu bytes (failure %d)\n", std::uintmax_t{points}, left.bytes.size(),
                        ++failures);
    }
    std::printf("save, %s: %ju points, %d failures\n", effectName, std::uintmax_t{points - 1}, failures);
    return failures;
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
        failures = SweepKills(Effect::Kill, "killed ahead of a call") +
                   SweepKills(Effect::KillWithin, "killed within a write");
    fs::remove_all(folder);
    return failures > 0 ? 1 : 0;
}
