#include "oxd/system/Platform.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <span>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <langinfo.h>
#include <link.h>
#include <locale.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace oxd::platform {

namespace {

int standardOutput = STDOUT_FILENO; // once it is taken, the descriptor of its own

// The descriptor of this process that a name such as /dev/stdout leads to, through links of the system.
std::optional<int> NamedDescriptor(std::filesystem::path name)
{
    constexpr int mostLinks = 40;
    std::error_code error;
    const std::filesystem::path descriptors = std::filesystem::canonical("/proc/self/fd", error);
    for (int i = 0; i < mostLinks; ++i) {
        const std::filesystem::path folder = std::filesystem::absolute(name, error).parent_path();
        if (!descriptors.empty() && std::filesystem::canonical(folder, error) == descriptors) {
            int number = -1;
            const std::string text = name.filename();
            const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
            return parsed.ec == std::errc() ? std::optional(number) : std::nullopt;
        }
        if (!std::filesystem::is_symlink(name, error)) {
            break;
        }
        name = folder / std::filesystem::read_symlink(name, error);
    }
    return std::nullopt;
}

int OpenNowhere()
{
    return open("/dev/null", O_RDWR | O_CLOEXEC);
}

// What the environment asks for. A process takes it over only if it wants to, and this one does not.
std::string LocaleName()
{
    for (const char* const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const name = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): there is one thread
        if (name != nullptr && *name != '\0') {
            return name;
        }
    }
    return "C";
}

// Starts a program, found as a shell finds it, in a session of its own: without a terminal, and with streams that lead
// nowhere. -1 if it cannot be started.
pid_t StartAlone(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t streams;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&streams);
    posix_spawnattr_init(&attributes);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&streams, stream, "/dev/null", O_RDWR, 0);
    }
    sigset_t signals;
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF);
    pid_t child = -1;
    const int error = posix_spawnp(&child, arguments[0], &streams, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&streams);
    return error == 0 ? child : -1;
}

// What is behind `offset` in notes, rounded up to the words that these are of.
std::string_view Behind(std::string_view notes, std::size_t offset)
{
    return notes.substr(std::min((offset + 3) / 4 * 4, notes.size()));
}

// The version that the notes of a library tell, by the note that cmake/VersionNote.c.in makes, or nothing.
std::string_view VersionIn(std::string_view notes)
{
    ElfW(Nhdr) header;
    while (notes.size() >= sizeof header) {
        std::memcpy(&header, notes.data(), sizeof header);
        const std::string_view texts = notes.substr(sizeof header);
        const std::string_view version = Behind(texts, header.n_namesz).substr(0, header.n_descsz);
        if (texts.starts_with(std::string_view("VELOxd", sizeof "VELOxd")) && header.n_namesz == sizeof "VELOxd") {
            return version.substr(0, version.find('\0'));
        }
        notes = Behind(Behind(texts, header.n_namesz), header.n_descsz);
    }
    return {};
}

// Of the program or library with this address: the version in its notes.
struct VersionSearch
{
    std::uintptr_t address;
    std::string_view version;
};

bool IsIn(const ElfW(Phdr) & segment, const dl_phdr_info& object, std::uintptr_t address)
{
    return segment.p_type == PT_LOAD && address - object.dlpi_addr - segment.p_vaddr < segment.p_memsz;
}

int SearchIn(dl_phdr_info* object, std::size_t, void* data)
{
    auto& search = *static_cast<VersionSearch*>(data);
    const std::span segments(object->dlpi_phdr, object->dlpi_phnum);
    if (std::ranges::none_of(segments, [&](const auto& one) { return IsIn(one, *object, search.address); })) {
        return 0;
    }
    for (const auto& segment : segments) {
        if (segment.p_type == PT_NOTE && search.version.empty()) {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): the system tells addresses as numbers
            const auto* const notes = reinterpret_cast<const char*>(object->dlpi_addr + segment.p_vaddr);
            search.version = VersionIn({notes, segment.p_memsz});
        }
    }
    return 1;
}

std::string VersionOf(const void* function)
{
    VersionSearch search{reinterpret_cast<std::uintptr_t>(function), {}};
    dl_iterate_phdr(SearchIn, &search);
    return std::string(search.version);
}

} // namespace

std::optional<std::string> FileName(const std::string& name)
{
    return name;
}

void IgnoreBrokenPipes()
{
    (void)std::signal(SIGPIPE, SIG_IGN);
    (void)std::signal(SIGXFSZ, SIG_IGN);
}

int TakeStandardOutput()
{
    // Not one of the standard three, even if some of these are closed.
    standardOutput = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    int nowhere = OpenNowhere();
    while (nowhere >= 0 && nowhere <= STDERR_FILENO) { // stays where a stream is closed, so that no file gets there
        nowhere = OpenNowhere();
    }
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    return standardOutput;
}

LoadedFile FileOf(const void* function)
{
    Dl_info found = {};
    if (dladdr(function, &found) == 0 || found.dli_fname == nullptr) {
        return {};
    }
    std::error_code error;
    const std::string name = std::filesystem::canonical(found.dli_fname, error).string();
    if (error == std::errc::not_enough_memory) {
        throw std::bad_alloc();
    }
    return {error ? found.dli_fname : name, VersionOf(function)};
}

std::string ProgramFile()
{
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).string();
}

TextSettings GetTextSettings()
{
    TextSettings settings{LocaleName(), {}, {}};
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        settings.encoding = "unknown, the locale is not installed";
        settings.remedy = "Install this locale, or set LC_ALL to one that the command locale -a lists.";
        return settings;
    }
    settings.encoding = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    if (settings.encoding != "UTF-8" && settings.encoding != "ANSI_X3.4-1968") { // the latter is ASCII
        settings.remedy = "Set LC_ALL to a locale in UTF-8: the terminal shows names that are not ASCII wrongly.";
    }
    return settings;
}

bool IsStream(const std::string& name)
{
    struct stat status = {};
    const bool exists = stat(name.c_str(), &status) == 0;
    return NamedDescriptor(name) || (exists && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode));
}

int OpenStream(const std::string& name)
{
    if (const auto descriptor = NamedDescriptor(name)) {
        return fcntl(*descriptor == STDOUT_FILENO ? standardOutput : *descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    }
    int descriptor = -1;
    do {
        descriptor = open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

bool IsTerminal(int descriptor)
{
    return isatty(descriptor) == 1;
}

bool OpenInBrowser(const std::string& file)
{
    constexpr auto longestWait = std::chrono::seconds(3); // some browsers run in the program that starts them
    constexpr auto step = std::chrono::milliseconds(20);
    const pid_t child = StartAlone({"xdg-open", file});
    for (auto waited = step; child > 0 && waited < longestWait; waited += step) {
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) {
            return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        }
        std::this_thread::sleep_for(step);
    }
    return child > 0;
}

bool WriteAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool Close(int descriptor)
{
    return close(descriptor) == 0;
}

} // namespace oxd::platform
