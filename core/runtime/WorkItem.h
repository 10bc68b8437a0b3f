#pragma once

#include <atomic>
#include <functional>
#include <memory>

namespace quillmar {

using Task = std::function<void()>;

// A handle on delayed work: cancelling it before it runs means it never runs. Safe to use from any thread.
class WorkItem final {
public:
    void cancel() { m_cancelled.store(true, std::memory_order_release); }
    bool isCancelled() const { return m_cancelled.load(std::memory_order_acquire); }

private:
    std::atomic<bool> m_cancelled { false };
};

using WorkItemHandle = std::shared_ptr<WorkItem>;

} // namespace quillmar
