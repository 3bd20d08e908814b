// Fault injection into the command-line tool: in a process of its own for each, every allocation and every system call
// of a command fails once, and the process is killed or interrupted before every call. The file that the command writes
// must then be the old or the whole new one, success must mean the new one or all that is printed, and no temporary
// file may be left.
#include "Interpose.h"

#include "support/Bytes.h"

#include "oxd/commands/Run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;
using faults::Effect;
using faults::Kind;

namespace {

constexpr int internal = 70;
constexpr int interrupted = 130;
constexpr const char* oldBytes = "old"; // content of the file that a command replaces
constexpr const char* messages = "messages.txt";

using Arguments = std::vector<std::string>;

struct Command
{
    Arguments arguments;
    std::string output;
    std::string before = oldBytes; // what the output holds first
    bool isPrinted = false;        // the output is what the command prints, of which a failure may leave a part
    bool needsMemory = false;      // for a library that crashes without; the tool makes sure of that first
};

struct Ending
{
    bool struck = true; // whether a fault was injected; certain unless the process came to its own end
    int code = -1;      // -1 if a signal killed it
    std::string output{};
};

// Points are tried in steps of this length, and all of the first ones, in which the process is set up.
std::uint64_t every = 1;

std::string InputBytes()
{
    std::string samples;
    for (int i = 0; i < 16 * 16 * 4; ++i)
        samples += static_cast<char>(i * i / 7);
    return "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=Scan\r\nGr0-Count=1\r\nGr0-Ch0=C\r\nInfoSet=I\r\n[I]"
           "\r\nA=1\r\n"
           "[C]\r\nVersion=2\r\nPoints=16\r\nLines=16\r\nSaveBits=32\r\nDim0Name=X\r\nDim0Unit=m\r\nDim0Range="
           "1\r\nDim0Min=0\r\n"
           "Dim1Name=Y\r\nDim1Unit=m\r\nDim1Range=1\r\nDim1Min=0\r\nDim2Name=Z\r\nDim2Unit=V\r\nDim2Range=2\r\n"
           "Dim2Min=0\r\n\r\n#!" +
           samples;
}

Arguments Exporting(const std::string& output)
{
    return {"export", "in.oxd", "--group", "Scan", "--channel", "0", "-o", output};
}

std::vector<Command> Commands()
{
    Command inPlace{{"set", "both.oxd", "New/Item", "1", "--create", "--in-place"}, "both.oxd", InputBytes()};
    Command sheet{{"export", "in.oxd", "--sheet", "-o", "sheet.png"}, "sheet.png"};
    Command grey{Exporting("grey.png"), "grey.png"};
    grey.arguments.emplace_back("--grey");
    Command curves{Exporting("curves.png"), "curves.png"};
    curves.arguments.insert(curves.arguments.end(), {"--as", "curves", "--lines", "0,2", "--range", "full"});
    const auto careless = [](const char* file) { return Command{Exporting(file), file, oldBytes, false, true}; };
    const auto printing = [](const Arguments& arguments) { return Command{arguments, "printed.json", "", true}; };
    return {printing({"info", "in.oxd", "--json"}),
            printing({"validate", "in.oxd", "--json"}),
            printing({"validate", "in.oxd", "--sarif"}),
            printing({"diff", "in.oxd", "in.oxd", "--json"}),
            {Exporting("out.png"), "out.png"},
            grey,
            curves,
            sheet,
            careless("out.svg"),
            careless("out.pdf"),
            careless("out.tif"),
            {Exporting("out.csv"), "out.csv"},
            {Exporting("out.raw"), "out.raw"},
            {{"correct", "in.oxd", "--group", "Scan", "--channel", "0", "--op", "line", "-o", "out.oxd"}, "out.oxd"},
            {{"salvage", "in.oxd", "--map", "map.json", "-o", "salvaged.oxd"}, "salvaged.oxd"},
            inPlace};
}

// Only in the child: the tool with its messages in a file.
[[noreturn]] void RunTool(const Command& command, const faults::Plan& plan, faults::Count& count)
{
    std::string name = "oxd";
    std::vector<char*> words{name.data()};
    std::vector<std::string> own = command.arguments;
    for (std::string& argument : own)
        words.push_back(argument.data());
    const int file = open(messages, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(command.isPrinted ? open(command.output.c_str(), O_WRONLY) : file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    faults::Arm(plan);
    const int code = oxd::RunProcess(static_cast<int>(words.size()), words.data());
    count = faults::Disarm();
    _exit(code);
}

Ending Run(const Command& command, const faults::Plan& plan)
{
    static auto* const shared = static_cast<faults::Count*>(
        mmap(nullptr, sizeof(faults::Count), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    *shared = {.struck = true};
    WriteBytes(command.output, command.before);
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0)
        RunTool(command, plan, *shared);
    int status = 0;
    waitpid(child, &status, 0);
    return {shared->struck, WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(command.output)};
}

// Whether there was a file with the name of a temporary one, which is removed then.
bool RemoveTemporary()
{
    bool found = false;
    for (const fs::directory_entry& entry : fs::directory_iterator("."))
        found |= entry.path().filename().string().starts_with(".oxd-") && fs::remove(entry.path());
    return found;
}

// What is wrong with the ending, or nothing.
const char* Fault(const Ending& ending, const Command& command, const std::string& whole, const faults::Plan& plan)
{
    const bool isKilled = plan.effect == Effect::Kill || plan.effect == Effect::KillWithin;
    const bool leftTemporary = RemoveTemporary();
    if (ending.code == -1 && !isKilled)
        return "crashes";
    if (ending.code == 0 && ending.output != whole)
        return "succeeds without the new file";
    const bool hasReplaced = ending.output != command.before && !command.isPrinted;
    if (hasReplaced && ending.output != whole)
        return "leaves another file";
    if (ending.code == interrupted && hasReplaced)
        return "is interrupted and leaves the new file";
    if (plan.kind == Kind::File && ending.code > 0 && hasReplaced)
        return "fails and leaves the new file";
    if (plan.kind == Kind::Memory && ending.code > 0 && ending.code != internal)
        return "takes a lack of memory for something else";
    if (ending.code > 0 && ending.code != interrupted && ReadBytes(messages).empty())
        return "fails without a message";
    return leftTemporary && !isKilled && plan.effect != Effect::FailOn ? "leaves a temporary file" : nullptr;
}

int Sweep(const Command& command, faults::Plan plan, const char* effectName)
{
    const auto [ignored, code, whole] = Run(command, {plan.kind});
    constexpr std::uint64_t first = 50;
    std::uint64_t points = 0;
    int failures = code != 0 || whole == command.before ? 1 : 0;
    bool struck = true;
    for (plan.at = 0; struck; plan.at += plan.at < first ? 1 : every, ++points) {
        const Ending ending = Run(command, plan);
        struck = ending.struck;
        const char* const fault = Fault(ending, command, whole, plan);
        if (fault && ++failures <= 5)
            std::printf("  point %ju: %s (exit code %d)\n%s", std::uintmax_t{plan.at}, fault, ending.code,
                        ReadBytes(messages).c_str());
    }
    std::printf("%s to %s, %s: %ju points, %d failures\n", command.arguments[0].c_str(), command.output.c_str(),
                effectName, std::uintmax_t{points - 1}, failures);
    return points > 1 ? failures : failures + 1;
}

struct NamedPlan
{
    Kind kind;
    Effect effect;
    const char* name;
};

std::vector<NamedPlan> Plans(std::string_view what)
{
    if (what == "memory")
        return {{Kind::Memory, Effect::Fail, "no memory once"},
                {Kind::Memory, Effect::FailOn, "no memory from then on"}};
    if (what == "files")
        return {{Kind::File, Effect::Fail, "a call fails"},
                {Kind::File, Effect::FailOn, "all calls fail from then on"},
                {Kind::File, Effect::Shorten, "half of the bytes"},
                {Kind::File, Effect::Interrupt, "a call is interrupted"}};
    if (what == "kills")
        return {{Kind::File, Effect::Kill, "killed before a call"},
                {Kind::File, Effect::KillWithin, "killed within a write"},
                {Kind::File, Effect::CtrlC, "Ctrl-C before a call"}};
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    every = std::strtoul(argv[3], nullptr, 10);
    setenv("SOURCE_DATE_EPOCH", "0", 1); // so that a command always writes the same bytes
    fs::create_directories(argv[2]);
    fs::current_path(argv[2]);
    WriteBytes("in.oxd", InputBytes());
    int failures = 0;
    std::size_t sweeps = 0;
    for (const Command& command : Commands()) {
        for (const NamedPlan& plan : Plans(argv[1])) {
            if (command.needsMemory && plan.kind == Kind::Memory)
                continue;
            failures += Sweep(command, {plan.kind, 0, plan.effect}, plan.name);
            ++sweeps;
        }
    }
    fs::current_path("/");
    fs::remove_all(argv[2]);
    return failures > 0 || sweeps == 0 ? 1 : 0;
}
