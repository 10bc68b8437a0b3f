#include "core/windows/WindowMover.h"

#include <utility>

#include "core/windows/AXElement.h"

namespace quillmar {

WindowMover::WindowMover(Runtime& runtime, Accessibility& accessibility)
    : m_ax(accessibility)
    , m_queue(runtime.makeSerialQueue(queueLabel))
{
}

WindowMover::~WindowMover()
{
    m_queue.reset();
}

void WindowMover::submit(AXElement window, const Rect& frame, bool resize)
{
    bool wasScheduled;
    {
        std::lock_guard lock(m_mutex);
        m_pending = Request { window, frame, resize };
        wasScheduled = m_scheduled;
        m_scheduled = true;
    }
    if (!wasScheduled)
        m_queue->post([this] { drain(); });
}

void WindowMover::drain()
{
    std::optional<Request> request;
    {
        std::lock_guard lock(m_mutex);
        request = std::exchange(m_pending, std::nullopt);
        m_scheduled = false;
    }
    if (!request)
        return;
    m_ax.setAttribute(request->window, AXName::position, Point { request->frame.x, request->frame.y });
    if (request->resize)
        m_ax.setAttribute(request->window, AXName::size, Size { request->frame.width, request->frame.height });
}

void WindowMover::whenIdle(Task task)
{
    m_queue->post(std::move(task));
}

} // namespace quillmar
