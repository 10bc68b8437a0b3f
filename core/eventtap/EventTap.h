#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/desktop/InputEvent.h"
#include "core/eventtap/EventTapSource.h"
#include "core/eventtap/EventTapWorker.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"

namespace quillmar {

// Whether a registration only observes events (yes) or may change and swallow them (no).
enum class ListenOnly { no, yes };

// The one system event tap that all features share. Features register handlers under a name for a set of
// event types; the tap keeps one system tap for the filtering registrations and one for the listen-only
// ones, each selecting exactly the types registered. Confined to the main thread: every member stops the
// process when called elsewhere. Handlers run on the main thread too.
class EventTap final {
public:
    // Returns the event, possibly changed, to let it on, or nothing to swallow it. Listen-only handlers'
    // results are ignored.
    using Handler = std::function<std::optional<InputEvent>(const InputEvent&)>;

    // Reads the Accessibility trust from `source`; creates no tap until something is registered.
    EventTap(Runtime& runtime, EventTapSource& source);
    // Removes the taps; handler work already queued on the main thread then does nothing.
    ~EventTap();

    EventTap(const EventTap&) = delete;
    EventTap& operator=(const EventTap&) = delete;

    // Registers `handler` under `name` ("windows.drag") for `eventTypes` (EventType numbers; types of 64 and
    // above can never be tapped and are dropped). A name already registered is replaced and keeps its place
    // in the order that filtering handlers run in. `handler` must not be empty.
    void registerHandler(std::string name, std::vector<std::uint32_t> eventTypes, ListenOnly listenOnly,
        Handler handler);

    // Removes the registration under `name`; no effect for an unknown name.
    void unregister(std::string_view name);

    bool isRegistered(std::string_view name) const;

    // The OR of 1 << type over the registrations of that kind: the mask its system tap selects. Zero while
    // Accessibility is not trusted, since the system would refuse the tap.
    std::uint64_t mask(ListenOnly listenOnly) const;

    // Reads the Accessibility trust again (the user may grant or revoke it at any time) and creates or
    // removes the taps to match. Returns it.
    bool refreshTrust();
    bool isTrusted() const;

    // Posts a key press (down, then up) of virtual key `keyCode` with modifier `flags` (EventFlags bits),
    // marked as our own so the filter lets it through. False when the system did not take both events.
    bool postKey(std::uint32_t keyCode, std::uint64_t flags);

    // The main-thread half of the worker's hand-off. Runs the filtering handlers registered for the event's
    // type in registration order, each on the previous one's output, until one swallows it. The handlers
    // are fixed when the call starts, so a handler may register or unregister others.
    std::optional<InputEvent> runFilters(const InputEvent& event);

    // Hands the event to every listen-only handler registered for its type, in registration order.
    void runListeners(const InputEvent& event);

private:
    struct Registration {
        std::string name;
        std::uint64_t types;
        ListenOnly listenOnly;
        std::shared_ptr<const Handler> handler;
    };
    // Per event type, the handlers to run in order. Rebuilt on every change, never modified, so a dispatch
    // holds on to the table it started with.
    using ChainTable = std::array<std::vector<std::shared_ptr<const Handler>>, 64>;

    void assertMainThread() const;
    void registrationsChanged();
    void applyMasks();
    static std::size_t index(ListenOnly listenOnly) { return listenOnly == ListenOnly::yes ? 1 : 0; }

    Runtime& m_runtime;
    EventTapSource& m_source;
    bool m_trusted;
    std::vector<Registration> m_registrations;
    std::array<std::shared_ptr<const ChainTable>, 2> m_chains; // [ListenOnly::no], [ListenOnly::yes]
    std::array<std::uint64_t, 2> m_masks {};                   // over the registrations, whatever the trust
    std::array<std::uint64_t, 2> m_appliedMasks {};            // what the worker was last told
    // Ends when the tap goes; main-thread work the worker queued checks it before reaching in.
    LifetimeGuard m_guard;
    std::unique_ptr<EventTapWorker> m_worker;
};

} // namespace quillmar
