#include "tests/eventtap/FakeEventTapSource.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace quillmar {

namespace {

const char* kindName(TapKind kind)
{
    return kind == TapKind::filter ? "filter" : "listen-only";
}

} // namespace

void FakeEventTapSource::recordCall(std::string call)
{
    const SerialQueue* queue = m_runtime.runningSerial();
    callingQueues.push_back(queue ? queue->label() : "main");
    calls.push_back(std::move(call));
}

bool FakeEventTapSource::createTap(TapKind kind, std::uint64_t mask, EventTapSink& sink)
{
    recordCall(fmt::format("create {} {:#x}", kindName(kind), mask));
    EXPECT_FALSE(hasTap(kind)) << "a second " << kindName(kind) << " tap";
    if (refuseTaps)
        return false;
    m_taps[slot(kind)] = Tap { &sink, m_runtime.runningSerial(), mask };
    return true;
}

void FakeEventTapSource::removeTap(TapKind kind)
{
    recordCall(fmt::format("remove {}", kindName(kind)));
    m_taps[slot(kind)] = Tap {};
}

void FakeEventTapSource::enableTap(TapKind kind)
{
    recordCall(fmt::format("enable {}", kindName(kind)));
}

bool FakeEventTapSource::postEvent(const InputEvent& event)
{
    posted.push_back(event);
    return trusted;
}

void FakeEventTapSource::onTapQueue(TapKind kind, std::function<void(EventTapSink*)> work)
{
    // The sink is looked up when the delivery runs: a tap removed in between receives nothing.
    m_runtime.enqueue(m_taps[slot(kind)].queue, Duration::zero(),
        [this, kind, work = std::move(work)] { work(m_taps[slot(kind)].sink); });
}

std::shared_ptr<FakeEventTapSource::FilterDelivery> FakeEventTapSource::deliverFilter(const InputEvent& event)
{
    auto delivery = std::make_shared<FilterDelivery>();
    onTapQueue(TapKind::filter, [delivery, event](EventTapSink* sink) {
        delivery->verdict = sink ? sink->filterEvent(event) : std::optional<InputEvent>(event);
        delivery->done = true;
    });
    return delivery;
}

void FakeEventTapSource::deliverListen(const InputEvent& event)
{
    onTapQueue(TapKind::listenOnly, [event](EventTapSink* sink) {
        if (sink)
            sink->listenEvent(event);
    });
}

void FakeEventTapSource::disable(TapKind kind, TapDisableReason reason)
{
    onTapQueue(kind, [kind, reason](EventTapSink* sink) {
        if (sink)
            sink->tapDisabled(kind, reason);
    });
}

} // namespace quillmar
