#include "core/agents/UsageScan.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

#include "core/agents/ClaudeLogReader.h"
#include "core/agents/CodexLogReader.h"
#include "core/agents/CountedResponses.h"

namespace quillmar {

namespace {

// A Claude response that may have been met in an earlier file; only the merge, in file order, can tell.
struct KeyedResponse {
    ResponseKey key;
    UsageRecord record;
    std::optional<Day> day; // none: outside the days counted
};

struct FileResult {
    UsageLedger ledger;
    std::vector<KeyedResponse> responses;
    std::uint64_t bytes = 0;
    bool unreadable = false;
};

// One thread's readers, reused from file to file.
class Worker final {
public:
    explicit Worker(const UsageScanOptions& options)
        : m_days(options.days)
        , m_since(options.since)
        , m_until(options.until)
    {
    }

    FileResult read(const AgentLogFile& file)
    {
        FileResult result;
        auto dayOf = [&](const UsageRecord& record) -> std::optional<Day> {
            auto day = m_days.dayOf(record.timestamp);
            if ((m_since && day < *m_since) || (m_until && day > *m_until))
                return std::nullopt;
            return day;
        };
        auto sink = [&](const UsageRecord& record) {
            if (auto day = dayOf(record))
                result.ledger.add(record, *day);
        };
        Result<void> outcome;
        if (file.agent == Agent::claude) {
            outcome = m_claude.read(file.path, [&](UsageRecord& record, const std::optional<ResponseKey>& key) {
                if (key) {
                    auto day = dayOf(record);
                    result.responses.push_back({ *key, std::move(record), day });
                } else {
                    sink(record);
                }
            });
            result.bytes = m_claude.bytesRead();
        } else {
            outcome = m_codex.read(file.path, sink);
            result.bytes = m_codex.bytesRead();
        }
        result.unreadable = !outcome;
        return result;
    }

private:
    LocalDays m_days;
    std::optional<Day> m_since;
    std::optional<Day> m_until;
    ClaudeLogReader m_claude;
    CodexLogReader m_codex;
};

} // namespace

UsageScanResult scanUsage(const std::vector<AgentLogFile>& files, const UsageScanOptions& options)
{
    unsigned threads = options.threads != 0 ? options.threads : std::max(1u, std::thread::hardware_concurrency());
    threads = static_cast<unsigned>(std::min<std::size_t>(threads, files.size()));

    // A file's totals wait only until every earlier file's are merged, so few are held at once.
    UsageScanResult scan;
    CountedResponses counted(scan.ledger);
    std::mutex lock;
    std::vector<std::optional<FileResult>> finished(files.size());
    std::size_t merged = 0;
    std::atomic<std::size_t> next { 0 };
    auto work = [&] {
        Worker worker(options);
        for (auto index = next++; index < files.size(); index = next++) {
            auto result = worker.read(files[index]);
            std::lock_guard guard(lock);
            finished[index] = std::move(result);
            for (; merged < files.size() && finished[merged]; ++merged) {
                scan.ledger.merge(finished[merged]->ledger);
                for (const auto& response : finished[merged]->responses)
                    counted.add(response.key, response.record, response.day);
                scan.bytes += finished[merged]->bytes;
                if (finished[merged]->unreadable)
                    scan.unreadable.push_back(files[merged]);
                finished[merged].reset();
            }
        }
    };
    if (threads <= 1) {
        work();
    } else {
        std::vector<std::jthread> pool;
        for (unsigned i = 0; i < threads; ++i)
            pool.emplace_back(work);
    }
    return scan;
}

} // namespace quillmar
