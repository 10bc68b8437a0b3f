#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "core/desktop/SessionEvents.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/MainQueue.h"
#include "platform/linux/DBusBuses.h"
#include "platform/linux/GMainLoopThread.h"

namespace quillmar {

// Sleep and lock as the freedesktop.org desktop reports them over D-Bus. On the system bus, logind's
// PrepareForSleep(true) is `systemWillSleep` and the Lock signal of this login session is `screenLocked`;
// on the session bus, a screen saver's ActiveChanged(true) (the freedesktop one or GNOME's, MATE's or
// Cinnamon's) is `screenLocked` too, since their screen saver is the lock screen. The signals arrive on a
// thread of the backend's own and are posted to the main queue, where the handler runs. A bus that is absent
// (containers, tests) leaves its signals unobserved, with a developer diagnostic.
class DBusSessionEvents final : public SessionEvents {
public:
    // `sessionId` is logind's name of this login session (XDG_SESSION_ID); empty asks logind for the session of
    // this process.
    DBusSessionEvents(MainQueue& mainQueue, DBusBuses buses, std::string sessionId);
    ~DBusSessionEvents() override;

    void startObserving(std::function<void(SessionEvent)> handler) override;
    void stopObserving() override;

    // Waits until the buses have taken in what the last start or stop asked for (or connecting failed), so that
    // no signal sent afterwards is missed, and until the signals the buses had routed here by then have been
    // posted to the main queue. False when `timeout` passed first. Main thread.
    bool waitUntilSettled(std::chrono::milliseconds timeout);

private:
    struct Watch;

    void settle(std::uint64_t ticket);

    MainQueue& m_mainQueue;
    std::function<void(SessionEvent)> m_handler;
    // Counts starts and stops, so that a signal posted for an earlier start never reaches a later handler.
    std::uint64_t m_generation = 0;
    std::unique_ptr<Watch> m_watch;

    std::uint64_t m_settleRequests = 0;
    std::mutex m_settledMutex;
    std::condition_variable m_settledChanged;
    std::uint64_t m_settled = 0;

    GMainLoopThread m_thread;
    LifetimeGuard m_guard;
};

} // namespace quillmar
