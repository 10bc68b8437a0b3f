#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/runtime/MainQueue.h"
#include "platform/linux/DBusBuses.h"

namespace quillmar {

// How long a test waits for anything from the bus before it fails.
inline constexpr std::chrono::milliseconds busDeadline { 5000 };

// The private bus of this test binary, started once before the first test; the tests point both the system
// and the session bus at it.
const std::string& testBusAddress();

inline DBusBuses testBuses()
{
    return { testBusAddress(), testBusAddress() };
}

// Buses that are not there.
inline DBusBuses absentBuses()
{
    return { "unix:path=/nonexistent/quillmar-test-system", "unix:path=/nonexistent/quillmar-test-session" };
}

// The developer diagnostics of the whole binary, from any thread.
class DiagnosticLog final {
public:
    void add(std::string_view line);
    // Waits until a line containing `text` has come; false after the bus deadline.
    bool waitFor(std::string_view text);

private:
    std::mutex m_mutex;
    std::condition_variable m_added;
    std::vector<std::string> m_lines;
};

DiagnosticLog& testDiagnostics();

// The main queue of a test: work posted from the backends' threads waits until the test runs it (after the
// backend's waitUntilSettled, which is the deadline). The thread that creates it is the main thread.
class WaitingMainQueue final : public MainQueue {
public:
    void post(Task task) override;
    WorkItemHandle postAfter(Duration delay, Task task) override;
    bool isMainThread() const override { return std::this_thread::get_id() == m_owner; }

    // Runs the work posted so far.
    void runPosted();

private:
    std::thread::id m_owner = std::this_thread::get_id();
    std::mutex m_mutex;
    std::deque<Task> m_tasks;
};

} // namespace quillmar
