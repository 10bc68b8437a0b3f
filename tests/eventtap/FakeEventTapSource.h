#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/eventtap/EventTapSource.h"
#include "core/runtime/VirtualRuntime.h"

namespace quillmar {

// Records what the worker asks of the system and plays the system's side: events are delivered on the
// queue that created the tap, as a real tap calls back on the thread whose run loop it was added to.
class FakeEventTapSource final : public EventTapSource {
public:
    // Filled in when the delivery has run on the tap's queue.
    struct FilterDelivery {
        bool done = false;
        std::optional<InputEvent> verdict;
    };

    explicit FakeEventTapSource(VirtualRuntime& runtime) : m_runtime(runtime) { }

    bool createTap(TapKind kind, std::uint64_t mask, EventTapSink& sink) override;
    void removeTap(TapKind kind) override;
    void enableTap(TapKind kind) override;
    bool postEvent(const InputEvent& event) override;
    bool isAccessibilityTrusted() const override { return trusted; }

    // Queues `event` for the filter tap; the verdict is the event unchanged when no filter tap is installed.
    std::shared_ptr<FilterDelivery> deliverFilter(const InputEvent& event);
    void deliverListen(const InputEvent& event);
    void disable(TapKind kind, TapDisableReason reason);

    bool hasTap(TapKind kind) const { return m_taps[slot(kind)].sink != nullptr; }
    std::uint64_t tapMask(TapKind kind) const { return m_taps[slot(kind)].mask; }

    // "create filter 0xc00", "remove listen-only", "enable filter": tap calls in order.
    std::vector<std::string> calls;
    std::vector<InputEvent> posted;
    // Labels of the queues the tap calls came from ("main" for the main thread).
    std::vector<std::string> callingQueues;
    bool trusted = true;
    bool refuseTaps = false;

private:
    struct Tap {
        EventTapSink* sink = nullptr;
        const SerialQueue* queue = nullptr;
        std::uint64_t mask = 0;
    };
    static std::size_t slot(TapKind kind) { return kind == TapKind::filter ? 0 : 1; }
    void recordCall(std::string call);
    void onTapQueue(TapKind kind, std::function<void(EventTapSink*)> work);

    VirtualRuntime& m_runtime;
    std::array<Tap, 2> m_taps {};
};

} // namespace quillmar
