#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <queue>
#include <vector>

#include "core/runtime/Clock.h"
#include "core/runtime/WorkItem.h"

namespace quillmar {

// The thread-safe list of pending work behind the real queues: tasks ordered by due time (uptime), then
// by posting order, so that work posted for the same moment keeps its order.
class TimedTaskList final {
public:
    explicit TimedTaskList(const Clock& clock) : m_clock(clock) { }

    // Adds `task` to run once `delay` has passed, unless the returned item is cancelled first.
    WorkItemHandle push(Duration delay, Task task);

    // Waits for the next due task and returns it; none once `close` was called and nothing is due.
    std::optional<Task> takeNext();

    // Returns a task that is due now without waiting, or none.
    std::optional<Task> takeDue();

    // Wakes every waiter; `takeNext` then returns none once the due work is drained.
    void close();

private:
    struct Entry {
        Duration due;
        std::uint64_t sequence;
        Task task;
        WorkItemHandle item;
    };
    struct Later {
        bool operator()(const Entry& a, const Entry& b) const
        {
            return a.due != b.due ? a.due > b.due : a.sequence > b.sequence;
        }
    };

    std::optional<Task> popDueLocked();

    const Clock& m_clock;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::priority_queue<Entry, std::vector<Entry>, Later> m_entries;
    std::uint64_t m_nextSequence = 0;
    bool m_closed = false;
};

} // namespace quillmar
