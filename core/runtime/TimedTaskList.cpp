#include "core/runtime/TimedTaskList.h"

namespace quillmar {

WorkItemHandle TimedTaskList::push(Duration delay, Task task)
{
    auto item = std::make_shared<WorkItem>();
    {
        std::lock_guard lock(m_mutex);
        m_entries.push(Entry { m_clock.uptime() + delay, m_nextSequence++, std::move(task), item });
    }
    m_changed.notify_all();
    return item;
}

std::optional<Task> TimedTaskList::popDueLocked()
{
    while (!m_entries.empty() && m_entries.top().due <= m_clock.uptime()) {
        // priority_queue::top is const; the entry is popped right after, so moving out is safe.
        auto& top = const_cast<Entry&>(m_entries.top());
        Task task = std::move(top.task);
        bool cancelled = top.item->isCancelled();
        m_entries.pop();
        if (!cancelled)
            return task;
    }
    return std::nullopt;
}

std::optional<Task> TimedTaskList::takeNext()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        if (auto task = popDueLocked())
            return task;
        if (m_closed)
            return std::nullopt;
        if (m_entries.empty()) {
            m_changed.wait(lock);
        } else {
            auto wait = m_entries.top().due - m_clock.uptime();
            m_changed.wait_for(lock, wait);
        }
    }
}

std::optional<Task> TimedTaskList::takeDue()
{
    std::lock_guard lock(m_mutex);
    return popDueLocked();
}

void TimedTaskList::close()
{
    {
        std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_changed.notify_all();
}

} // namespace quillmar
