#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "core/runtime/Runtime.h"

namespace quillmar {

// Deterministic time for tests: nothing runs until the test moves the clock. `advance` runs every task
// that falls due, main and serial alike, in order of due time and then of posting, each with the clock
// set to its due time. Everything runs on the test's thread; while a serial queue's task runs,
// `isMainThread` is false, so confinement checks behave as on real threads.
class VirtualRuntime final : public Runtime {
public:
    VirtualRuntime();
    ~VirtualRuntime() override;

    Clock& clock() override;
    MainQueue& mainQueue() override;
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string label) override;
    std::unique_ptr<Signal> makeSignal() override;

    // Moves the clock forward by `duration`, running what falls due on the way.
    void advance(Duration duration);

    // Runs what is due now, including work that it posts for now.
    void runUntilIdle();

    // Sets the wall clock (uptime is unaffected).
    void setWallTime(WallTime time);

    // Tasks posted and neither run nor cancelled.
    std::size_t pendingCount() const;

    // Runs the earliest task due at or before `limit`, moving the clock to its due time; false when none.
    // Used by virtual signals to wait.
    bool runNext(Duration limit);

    Duration uptime() const;
    WallTime now() const;
    void moveClock(Duration to);

    // `serial` is the serial queue posting, or null for the main queue.
    WorkItemHandle enqueue(const SerialQueue* serial, Duration delay, Task task);
    // The serial queue whose task is running, or null while main work (or the test itself) runs.
    const SerialQueue* runningSerial() const { return m_running; }
    bool onOwnerThread() const { return std::this_thread::get_id() == m_owner; }

private:
    struct Key {
        Duration due;
        std::uint64_t sequence;
        bool operator<(const Key& other) const
        {
            return due != other.due ? due < other.due : sequence < other.sequence;
        }
    };
    struct Entry {
        const SerialQueue* serial;
        Task task;
        WorkItemHandle item;
    };

    mutable std::mutex m_mutex;
    std::map<Key, Entry> m_entries;
    std::uint64_t m_nextSequence = 0;
    Duration m_uptime { 0 };
    WallTime m_wallOrigin;
    Duration m_wallOriginUptime { 0 };
    const SerialQueue* m_running = nullptr;
    std::thread::id m_owner;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<MainQueue> m_main;
};

} // namespace quillmar
