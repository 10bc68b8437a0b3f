#pragma once

#include <xcb/xcb.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "core/base/Result.h"
#include "core/runtime/Clock.h"
#include "platform/linux/FileDescriptor.h"

namespace quillmar {

// The atoms the X11 backends use, interned once per connection.
enum class X11Atom : std::uint8_t {
    utf8String,
    clipboard,
    targets,
    netActiveWindow,
    netClientListStacking,
    netWmName,
    netWmPid,
    netWorkarea,
    netSupportingWmCheck,
    wmState,
};
inline constexpr std::size_t x11AtomCount = 10;

// Frees what xcb allocated for a reply or an error.
struct XcbFree {
    void operator()(void* pointer) const { std::free(pointer); }
};
template<typename T>
using XcbPointer = std::unique_ptr<T, XcbFree>;

// The answer to one request: its reply (none for a request without one) or the server's error.
struct X11Answer {
    XcbPointer<void> reply;
    XcbPointer<xcb_generic_error_t> error;
};

// One connection to an X server, shared by the X11 backends of a process. Requests may be sent from any
// thread (xcb serialises them). Events are read by one thread of the connection, started with the first
// listener, which hands each event to every listener on that thread; listeners post what they make of
// it to the main queue themselves.
class X11Connection final {
public:
    using Listener = std::function<void(const xcb_generic_event_t& event)>;
    using ListenerID = std::uint64_t;

    // How long a request that waits for the server may take before the caller gives up on it.
    static constexpr Duration replyTimeout = std::chrono::milliseconds(500);

    // Opens `displayName` ("" for DISPLAY) and interns the atoms. The error's message is the sentence a
    // user reads.
    static Result<std::shared_ptr<X11Connection>> open(const std::string& displayName);

    // The process's connection to DISPLAY, opened on first use and kept while anyone holds it. Refuses with
    // the sentence about `feature` ("Global shortcuts") outside an X11 session.
    static Result<std::shared_ptr<X11Connection>> shared(std::string_view feature);

    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    xcb_connection_t* raw() const { return m_connection; }
    xcb_window_t root() const { return m_screen->root; }
    const xcb_screen_t& screen() const { return *m_screen; }
    xcb_atom_t atom(X11Atom atom) const { return m_atoms[static_cast<std::size_t>(atom)]; }

    // Waits at most `timeout` for the answer to the request numbered `sequence` (a cookie's sequence).
    // Fails when the time is up or the connection broke. Never call it from a listener.
    Result<X11Answer> answer(unsigned int sequence, Duration timeout = replyTimeout);

    // Waits until the server has handled every request sent so far, so that their errors are known.
    Result<void> roundTrip(Duration timeout = replyTimeout);

    // Adds a listener; events read after this returns reach it, on the connection's reading thread.
    ListenerID addListener(Listener listener);
    // After this returns the listener is not called again. Never call it from a listener.
    void removeListener(ListenerID id);

private:
    X11Connection(xcb_connection_t* connection, xcb_screen_t* screen, FileDescriptor wake);
    void read();
    void wakeReader() const;

    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen;
    std::array<xcb_atom_t, x11AtomCount> m_atoms {};
    FileDescriptor m_wake; // an eventfd that wakes the reading thread
    std::mutex m_listenersMutex;
    std::map<ListenerID, Listener> m_listeners;
    ListenerID m_nextListener = 1;
    std::atomic<bool> m_stopping { false };
    std::thread m_reader;
};

} // namespace quillmar
