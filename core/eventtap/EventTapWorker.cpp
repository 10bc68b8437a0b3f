#include "core/eventtap/EventTapWorker.h"

#include <atomic>

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

// One event waiting for the main thread's verdict. Whoever moves `state` away from `pending` first decides:
// the main thread by starting the handlers, or the worker by giving up once the budget has passed. So the
// handlers never run for an event that has already gone on unchanged.
struct FilterRequest {
    enum class State { pending, started, abandoned };

    FilterRequest(const InputEvent& input, std::unique_ptr<Signal> signal)
        : event(input)
        , done(std::move(signal))
    {
    }

    bool moveFromPending(State to)
    {
        auto expected = State::pending;
        return state.compare_exchange_strong(expected, to);
    }

    std::atomic<State> state { State::pending };
    const InputEvent event;
    std::optional<InputEvent> verdict; // written by the main thread before `done` is raised
    std::unique_ptr<Signal> done;
};

const char* kindName(TapKind kind)
{
    return kind == TapKind::filter ? "filter" : "listen-only";
}

} // namespace

EventTapWorker::EventTapWorker(Runtime& runtime, EventTapSource& source, FilterChain filter, ListenChain listen)
    : m_runtime(runtime)
    , m_source(source)
    , m_filter(std::make_shared<const FilterChain>(std::move(filter)))
    , m_listen(std::make_shared<const ListenChain>(std::move(listen)))
    , m_queue(runtime.makeSerialQueue(queueLabel))
{
}

EventTapWorker::~EventTapWorker()
{
    auto removed = m_runtime.makeSignal();
    m_queue->post([this, &removed] {
        apply(TapKind::filter, 0);
        apply(TapKind::listenOnly, 0);
        removed->raise();
    });
    removed->wait();
}

void EventTapWorker::replaceTap(TapKind kind, std::uint64_t mask)
{
    m_queue->post([this, kind, mask] { apply(kind, mask); });
}

std::uint64_t& EventTapWorker::installed(TapKind kind)
{
    return m_installed[kind == TapKind::filter ? 0 : 1];
}

void EventTapWorker::apply(TapKind kind, std::uint64_t mask)
{
    auto& current = installed(kind);
    if (current != 0) {
        m_source.removeTap(kind);
        current = 0;
    }
    if (mask == 0)
        return;
    if (m_source.createTap(kind, mask, *this))
        current = mask;
    else
        diagnostic("eventtap: the system refused the {} tap for mask {:#x}", kindName(kind), mask);
}

std::optional<InputEvent> EventTapWorker::filterEvent(const InputEvent& event)
{
    if (event.sourceUserData == ownEventUserData)
        return event;
    // The tap's mask already limits what arrives; this also covers types that a changed mask no longer has.
    if ((installed(TapKind::filter) & eventMaskBit(event.type)) == 0)
        return event;

    auto request = std::make_shared<FilterRequest>(event, m_runtime.makeSignal());
    m_runtime.mainQueue().post([request, chain = m_filter] {
        if (!request->moveFromPending(FilterRequest::State::started))
            return;
        request->verdict = (*chain)(request->event);
        request->done->raise();
    });

    if (request->done->waitFor(mainThreadBudget))
        return request->verdict;
    if (request->moveFromPending(FilterRequest::State::abandoned))
        return event;
    // The handlers have started: their verdict is the one that counts, however long they take.
    request->done->wait();
    return request->verdict;
}

void EventTapWorker::listenEvent(const InputEvent& event)
{
    // Our own synthetic events are not input: a listener that reacts to typing must not react to the keys
    // it had posted.
    if (event.sourceUserData == ownEventUserData)
        return;
    if ((installed(TapKind::listenOnly) & eventMaskBit(event.type)) == 0)
        return;
    m_runtime.mainQueue().post([event, chain = m_listen] { (*chain)(event); });
}

void EventTapWorker::tapDisabled(TapKind kind, TapDisableReason reason)
{
    diagnostic("eventtap: the system disabled the {} tap ({}), enabling it again", kindName(kind),
        reason == TapDisableReason::timeout ? "timeout" : "user input");
    m_source.enableTap(kind);
}

} // namespace quillmar
