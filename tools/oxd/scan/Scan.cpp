#include "oxd/scan/Scan.h"

#include "oxd/files/Interruption.h"
#include "oxd/scan/FileCounter.h"
#include "oxd/scan/ScanRecord.h"
#include "oxd/system/Results.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <future>
#include <string>
#include <utility>

namespace oxd {

namespace {

// Few enough that an interruption does not wait, and many enough that a thread is worth starting.
constexpr std::size_t filesPerBatch = 32;

struct Batch
{
    std::string records;
    std::size_t files = 0;
};

Batch Read(const std::vector<FoundFile>& files, std::optional<FileTime> since)
{
    Batch batch{{}, files.size()};
    for (const FoundFile& file : files) {
        batch.records += ScanRecord(file, since);
    }
    return batch;
}

// Goes from root to root.
class FileSource
{
public:
    explicit FileSource(const ScanRequest& request) : m_request(&request) {}

    std::vector<FoundFile> TakeBatch()
    {
        std::vector<FoundFile> files;
        while (files.size() < filesPerBatch) {
            auto file = Next();
            if (!file) {
                break;
            }
            files.push_back(std::move(*file));
        }
        return files;
    }

private:
    std::optional<FoundFile> Next()
    {
        for (;;) {
            if (auto file = m_walk ? m_walk->Next() : std::nullopt) {
                return file;
            }
            if (m_nextRoot == m_request->roots.size()) {
                return std::nullopt;
            }
            m_walk.emplace(m_request->roots[m_nextRoot++], m_request->choice);
        }
    }

    const ScanRequest* m_request;
    std::size_t m_nextRoot = 0;
    std::optional<FolderWalk> m_walk;
};

Batch Await(std::future<Batch>& reading)
{
    constexpr std::chrono::milliseconds patience(100);
    do {
        interruption::Check();
    } while (reading.wait_for(patience) != std::future_status::ready);
    return reading.get();
}

} // namespace

void Scan(const ScanRequest& request, Results& results)
{
    interruption::Defer();
    FileSource source(request);
    FileCounter counter;
    std::deque<std::future<Batch>> readings; // in the order of their files
    for (auto files = source.TakeBatch(); !files.empty() || !readings.empty();) {
        if (!files.empty() && readings.size() <= request.threads) {
            readings.push_back(std::async(std::launch::async, Read, std::exchange(files, {}), request.since));
            files = source.TakeBatch();
            continue;
        }
        const Batch batch = Await(readings.front());
        readings.pop_front();
        results.Write(batch.records);
        counter.Add(batch.files);
    }
}

} // namespace oxd
