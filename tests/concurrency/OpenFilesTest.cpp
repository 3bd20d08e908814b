// What the interface promises of threads: each may work on files of its own, whatever others do to theirs.
#include <VELOxdDll.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::uint64_t threads = 4;
constexpr std::uint64_t points = 8;
constexpr std::uint64_t lines = 4;
constexpr std::uint64_t root = 1;

class OpenFilesTest : public ::testing::Test
{
protected:
    OpenFilesTest() { std::filesystem::create_directories(m_folder); }
    ~OpenFilesTest() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    std::string Path(std::uint64_t thread) const { return (m_folder / std::to_string(thread)).string(); }

    // Runs job(thread) in several threads at once.
    static void RunTogether(const std::function<void(std::uint64_t)>& job)
    {
        std::vector<std::jthread> running;
        for (std::uint64_t thread = 0; thread < threads; ++thread)
            running.emplace_back(job, thread);
    }

private:
    std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / ("veloxd-threads-" + std::to_string(::getpid()));
};

// What the file of a thread holds differs from what those of others do.
std::int32_t SampleAt(std::uint64_t thread, std::uint64_t channel, std::uint64_t point, std::uint64_t line)
{
    return static_cast<std::int32_t>(((thread * 2 + channel) * lines + line) * points + point + 1) << 16;
}

std::uint64_t MakeFile(std::uint64_t thread, const std::string& path)
{
    const std::uint64_t file = CreateOxdFile(path.c_str());
    CreateGroup(file, 32);
    SetChannelCount(file, 0, 2);
    for (std::uint64_t channel = 0; channel < 2; ++channel) {
        SetChannelXYDimension(file, 0, channel, points, lines);
        for (std::uint64_t i = 0; i < points * lines; ++i)
            SetChannelData_PixelRaw(file, 0, channel, i % points, i / points,
                                    SampleAt(thread, channel, i % points, i / points));
    }
    const std::uint64_t group = AddMetaInfoItemGroup(file, root, "group");
    for (int item = 0; item < 3; ++item)
        AddMetaInfoItem(file, group, std::to_string(item).c_str(), std::to_string(thread).c_str());
    return file;
}

int CountWrongSamples(std::uint64_t thread, std::uint64_t file)
{
    int wrong = 0;
    for (std::uint64_t i = 0; i < 2 * points * lines; ++i) {
        const std::uint64_t channel = i % 2;
        const std::uint64_t point = i / 2 % points;
        const std::uint64_t line = i / 2 / points;
        const auto sample = GetChannelData_PixelRaw(file, 0, channel, point, line, 0);
        wrong += sample == SampleAt(thread, channel, point, line) ? 0 : 1;
    }
    return wrong;
}

// Walks all information until there is no next item, and counts the items that have another value than they should.
int CountWrongItems(std::uint64_t thread, std::uint64_t file)
{
    int right = 0;
    std::uint64_t item = SelectFirstChildMetaInfoItem(file, SelectFirstChildMetaInfoItem(file, root));
    for (; item != 0; item = SelectNextMetaInfoItem(file, item)) {
        char value[16] = "";
        GetMetaInfoItemValue(file, item, value, sizeof value);
        right += value == std::to_string(thread) && !IsMetaInfoItemAGroup(file, item) ? 1 : 0;
    }
    return 3 - right;
}

TEST_F(OpenFilesTest, FilesOfDifferentThreadsAreOpenedEditedSavedAndClosedAtOnce)
{
    std::atomic<int> wrong = 0;
    RunTogether([&](std::uint64_t thread) {
        for (int round = 0; round < 50; ++round) {
            const std::uint64_t made = MakeFile(thread, Path(thread));
            wrong += CountWrongSamples(thread, made) + CountWrongItems(thread, made);
            SaveOxdFile(made);
            CloseOxdFile(made);
            const std::uint64_t opened = OpenOxdFile(Path(thread).c_str());
            const std::uint64_t group = SelectFirstChildMetaInfoItem(opened, root);
            wrong += CountWrongSamples(thread, opened) + CountWrongItems(thread, opened);
            DeleteMetaInfoItem(opened, group);
            wrong += IsMetaInfoItemAGroup(opened, group) ? 1 : 0;
            CloseOxdFile(opened);
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(GetGroupCount(1), 0U) << "all files are closed";
}

TEST_F(OpenFilesTest, FileIsReadWhileOthersComeAndGo)
{
    std::atomic<bool> isDone = false;
    std::atomic<int> wrong = 0;
    RunTogether([&](std::uint64_t thread) {
        const std::uint64_t file = MakeFile(thread, Path(thread));
        if (thread == 0) { // enough files for the table to grow several times
            std::vector<std::uint64_t> others;
            for (std::uint64_t i = 0; i < 200; ++i)
                others.push_back(MakeFile(threads + i, Path(threads)));
            for (const std::uint64_t other : others)
                CloseOxdFile(other);
            isDone = true;
        }
        do
            wrong += CountWrongSamples(thread, file) + CountWrongItems(thread, file);
        while (!isDone);
        CloseOxdFile(file);
    });
    EXPECT_EQ(wrong, 0);
}

TEST_F(OpenFilesTest, ThreadsThatOpenAtOnceGetTheSmallestNumbersOnceEach)
{
    std::mutex mutex;
    std::set<std::uint64_t> handles;
    RunTogether([&](std::uint64_t thread) {
        for (int i = 0; i < 100; ++i) {
            const std::uint64_t file = CreateOxdFile(Path(thread).c_str());
            const std::lock_guard lock(mutex);
            handles.insert(file);
        }
    });
    EXPECT_EQ(handles.size(), threads * 100);
    EXPECT_EQ(*handles.rbegin(), threads * 100);
    std::ranges::for_each(handles, CloseOxdFile);
}

TEST_F(OpenFilesTest, ErrorThatIsReadIsWholeWhileOthersFail)
{
    std::atomic<int> torn = 0;
    RunTogether([&](std::uint64_t thread) {
        for (int round = 0; round < 300; ++round) {
            const std::uint64_t file = CreateOxdFile(Path(thread).c_str());
            if (thread % 2 == 0)
                GetGroupName(file, 7, nullptr, 0);
            else
                SelectNextMetaInfoItem(file, root);
            if (thread == 0) {
                const std::string text = VELGetLastError();
                const bool isWhole = text.find("No group with given index available. Index: 7") != std::string::npos ||
                                     text.find("No further items in this node available!") != std::string::npos;
                torn += isWhole && text.ends_with('\n') ? 0 : 1;
            }
            CloseOxdFile(file);
        }
    });
    EXPECT_EQ(torn, 0);
    EXPECT_STREQ(VELGetLastError(), VELGetLastError()) << "reading a text does not drop it";
}

} // namespace
