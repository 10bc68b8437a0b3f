#include "core/runtime/EventLoop.h"

namespace quillmar {

EventLoop::EventLoop(const Clock& clock)
    : m_tasks(clock)
    , m_mainThread(std::this_thread::get_id())
{
}

void EventLoop::post(Task task)
{
    m_tasks.push(Duration::zero(), std::move(task));
}

WorkItemHandle EventLoop::postAfter(Duration delay, Task task)
{
    return m_tasks.push(delay, std::move(task));
}

bool EventLoop::isMainThread() const
{
    return std::this_thread::get_id() == m_mainThread;
}

void EventLoop::run()
{
    assertMainThread("event loop");
    while (auto task = m_tasks.takeNext())
        (*task)();
}

void EventLoop::stop()
{
    m_tasks.close();
}

void EventLoop::drainDue()
{
    assertMainThread("event loop");
    while (auto task = m_tasks.takeDue())
        (*task)();
}

} // namespace quillmar
