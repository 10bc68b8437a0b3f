#pragma once

#include <thread>

#include "core/runtime/SerialQueue.h"
#include "core/runtime/TimedTaskList.h"

namespace quillmar {

// A serial queue on its own thread. Destroying it runs the work that is already due, then joins.
class ThreadSerialQueue final : public SerialQueue {
public:
    ThreadSerialQueue(std::string label, const Clock& clock);
    ~ThreadSerialQueue() override;

    ThreadSerialQueue(const ThreadSerialQueue&) = delete;
    ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;

    void post(Task task) override;
    WorkItemHandle postAfter(Duration delay, Task task) override;
    const std::string& label() const override { return m_label; }
    bool isCurrent() const override;

private:
    std::string m_label;
    TimedTaskList m_tasks;
    std::thread m_thread;
};

} // namespace quillmar
