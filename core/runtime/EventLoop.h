#pragma once

#include <thread>

#include "core/runtime/MainQueue.h"
#include "core/runtime/TimedTaskList.h"

namespace quillmar {

// The real main queue: the thread that creates it is the main thread, and runs the work with `run`
// (until `stop`) or `drainDue` (what is due now, for short-lived front ends such as the CLI).
class EventLoop final : public MainQueue {
public:
    explicit EventLoop(const Clock& clock);

    void post(Task task) override;
    WorkItemHandle postAfter(Duration delay, Task task) override;
    bool isMainThread() const override;

    void run();
    void stop();
    void drainDue();

private:
    TimedTaskList m_tasks;
    std::thread::id m_mainThread;
};

} // namespace quillmar
