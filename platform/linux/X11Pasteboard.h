#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/desktop/Pasteboard.h"
#include "platform/linux/X11ClipboardTargets.h"
#include "platform/linux/X11Connection.h"

namespace quillmar {

// The X CLIPBOARD selection as the pasteboard. Owner changes come as XFixes notifications on the connection's
// reading thread, so `changeCount` is a counter read without asking the server. Reads convert the selection
// to a window of our own and wait for each answer (INCR transfers included) until one deadline for the whole
// read; writes own the selection with that window and serve every request on the reading thread.
class X11Pasteboard final : public Pasteboard {
public:
    struct Limits {
        // For one whole read; within the history's 2.0 s, which drops a read that takes longer.
        Duration readTimeout = std::chrono::milliseconds(1900);
        // For all types of one read together; a type that would go over is left out.
        std::size_t maxBytes = std::size_t { 100 } << 20;
        // How long quitting while owning the clipboard waits for a clipboard manager to take the contents.
        Duration handOverTimeout = std::chrono::milliseconds(500);
    };

    static constexpr std::string_view sessionRefusal = "Clipboard history needs an X11 session for now.";

    // On the process's shared connection; refuses with `sessionRefusal` outside an X11 session.
    static Result<std::unique_ptr<X11Pasteboard>> create();
    // On `connection`; fails when the server has no XFixes.
    static Result<std::unique_ptr<X11Pasteboard>> create(std::shared_ptr<X11Connection> connection, Limits limits);

    // Hands owned contents to a running clipboard manager (at most Limits::handOverTimeout), then lets go.
    ~X11Pasteboard() override;
    X11Pasteboard(const X11Pasteboard&) = delete;
    X11Pasteboard& operator=(const X11Pasteboard&) = delete;

    std::int64_t changeCount() const override { return m_changeCount.load(); }
    // The types the history reads (see X11ClipboardTargets), empty when no one owns the clipboard, what was
    // read so far when the owner stops answering before the deadline.
    PasteboardReading read() override;
    // Owns the clipboard with `writing`; false when the server gave it to someone else. The change count
    // already counts the change when this returns.
    bool write(const PasteboardWriting& writing) override;
    // Leaves the clipboard without an owner.
    void clear() override;

    // Waits at most `timeout` for the change count to pass `seen`; whether it did.
    bool awaitChange(std::int64_t seen, Duration timeout) const;
    // Whether our contents are on the clipboard.
    bool ownsClipboard() const;
    // Blocks until another client owns the clipboard (or it was cleared) or `timeout` passes; whether we lost it.
    bool awaitLoss(Duration timeout) const;

private:
    using Deadline = std::chrono::steady_clock::time_point;
    // An event about our window, kept for the read waiting on it.
    struct WindowEvent {
        std::uint8_t type = 0;
        xcb_atom_t atom = XCB_NONE; // the property (PropertyNotify, SelectionNotify) or target
        xcb_atom_t target = XCB_NONE;
        std::uint8_t state = 0;
    };
    // What we serve while we own the clipboard: each target with its bytes, in order.
    struct Offer {
        std::vector<std::pair<xcb_atom_t, std::string>> targets;
    };
    // One INCR transfer to a requestor, a chunk each time it deletes the property.
    struct Transfer {
        xcb_window_t requestor = XCB_NONE;
        xcb_atom_t property = XCB_NONE;
        xcb_atom_t type = XCB_NONE;
        std::shared_ptr<const Offer> offer; // keeps the bytes alive
        std::string_view bytes;
        std::size_t offset = 0;
    };

    X11Pasteboard(std::shared_ptr<X11Connection> connection, Limits limits);
    Result<void> setUp();
    void handle(const xcb_generic_event_t& event);
    void serve(const xcb_selection_request_event_t& request);
    void continueTransfer(const xcb_property_notify_event_t& event);
    void notifyRequestor(const xcb_selection_request_event_t& request, xcb_atom_t property);
    void handOver();

    std::optional<WindowEvent> awaitEvent(Deadline deadline, const std::function<bool(const WindowEvent&)>& matches);
    // The bytes of `target` converted from `selection`, at most `cap`; none when refused, late or too large.
    std::optional<std::string> fetch(xcb_atom_t selection, xcb_atom_t target, Deadline deadline, std::size_t cap);
    std::optional<std::string> takeProperty(Deadline deadline, std::size_t cap, xcb_atom_t* type);
    std::shared_ptr<const Offer> makeOffer(const PasteboardWriting& writing) const;
    void setOwner(xcb_window_t owner);
    xcb_atom_t atom(std::string_view name) const;

    std::shared_ptr<X11Connection> m_connection;
    Limits m_limits;
    xcb_window_t m_window = XCB_NONE;
    std::uint8_t m_xfixesEvent = 0;
    std::size_t m_chunkSize = 0; // the largest property written in one request; larger ones go INCR
    std::map<std::string, xcb_atom_t, std::less<>> m_atoms;
    std::map<xcb_atom_t, const ClipboardTarget*> m_rows;
    std::optional<X11Connection::ListenerID> m_listener;

    std::atomic<std::int64_t> m_changeCount { 0 };
    std::mutex m_readMutex; // one read at a time
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::deque<WindowEvent> m_events;
    xcb_window_t m_owner = XCB_NONE;
    std::shared_ptr<const Offer> m_offer; // while we own the clipboard
    std::vector<Transfer> m_transfers;
};

} // namespace quillmar
