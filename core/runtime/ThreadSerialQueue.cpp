#include "core/runtime/ThreadSerialQueue.h"

namespace quillmar {

ThreadSerialQueue::ThreadSerialQueue(std::string label, const Clock& clock)
    : m_label(std::move(label))
    , m_tasks(clock)
    , m_thread([this] {
        while (auto task = m_tasks.takeNext())
            (*task)();
    })
{
}

ThreadSerialQueue::~ThreadSerialQueue()
{
    m_tasks.close();
    m_thread.join();
}

void ThreadSerialQueue::post(Task task)
{
    m_tasks.push(Duration::zero(), std::move(task));
}

WorkItemHandle ThreadSerialQueue::postAfter(Duration delay, Task task)
{
    return m_tasks.push(delay, std::move(task));
}

bool ThreadSerialQueue::isCurrent() const
{
    return std::this_thread::get_id() == m_thread.get_id();
}

} // namespace quillmar
