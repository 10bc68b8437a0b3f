#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "core/desktop/InputEvent.h"
#include "core/eventtap/EventTapSink.h"
#include "core/eventtap/EventTapSource.h"
#include "core/runtime/Runtime.h"

namespace quillmar {

// Owns the system taps (one filter, one listen-only) on its own serial queue, and carries their events to
// the handlers, which live on the main thread. Tap operations and sink calls all happen on that queue.
class EventTapWorker final : public EventTapSink {
public:
    // How long the event stream waits for the main thread to start the filtering handlers. Past it the event
    // goes on unchanged: a stalled main thread must not freeze the pointer and keyboard, and the system
    // disables a tap whose callback keeps it waiting much longer.
    static constexpr Duration mainThreadBudget = std::chrono::milliseconds(60);

    static constexpr const char* queueLabel = "com.quillmar.eventtap";

    // The main-thread halves. FilterChain returns the event, possibly changed, or nothing to swallow it.
    using FilterChain = std::function<std::optional<InputEvent>(const InputEvent&)>;
    using ListenChain = std::function<void(const InputEvent&)>;

    // Creates no tap yet; replaceTap does. Both chains are called on the main thread only, possibly after
    // the worker is gone, so they must guard what they reach.
    EventTapWorker(Runtime& runtime, EventTapSource& source, FilterChain filter, ListenChain listen);

    // Removes both taps on the worker's queue and waits for it: the source never calls back afterwards.
    ~EventTapWorker() override;

    EventTapWorker(const EventTapWorker&) = delete;
    EventTapWorker& operator=(const EventTapWorker&) = delete;

    // From any thread: on the worker's queue, removes the tap of `kind` if there is one and creates one for
    // `mask` (bit n: event type n) unless it is zero. A refused tap leaves none until the next call.
    void replaceTap(TapKind kind, std::uint64_t mask);

    // EventTapSink, on the worker's queue.
    std::optional<InputEvent> filterEvent(const InputEvent& event) override;
    void listenEvent(const InputEvent& event) override;
    void tapDisabled(TapKind kind, TapDisableReason reason) override;

private:
    void apply(TapKind kind, std::uint64_t mask);
    std::uint64_t& installed(TapKind kind);

    Runtime& m_runtime;
    EventTapSource& m_source;
    std::shared_ptr<const FilterChain> m_filter;
    std::shared_ptr<const ListenChain> m_listen;
    // The mask of the tap in place of each kind, 0 for none. Touched on the worker's queue only.
    std::array<std::uint64_t, 2> m_installed {};
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quillmar
