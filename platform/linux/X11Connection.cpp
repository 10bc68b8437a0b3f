#include "platform/linux/X11Connection.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <xcb/xcbext.h>

#include <chrono>
#include <cstring>
#include <string_view>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "platform/linux/X11Session.h"

namespace quillmar {

namespace {

// In X11Atom order.
constexpr std::array<std::string_view, x11AtomCount> atomNames {
    "UTF8_STRING",
    "CLIPBOARD",
    "TARGETS",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WORKAREA",
    "_NET_SUPPORTING_WM_CHECK",
    "WM_STATE",
};

Error unreachable(std::string_view displayName, std::string_view detail)
{
    return Error { "x11.unreachable", fmt::format("The X display {} can't be reached.", displayName),
        std::string(detail) };
}

using Deadline = std::chrono::steady_clock::time_point;

// Waits until `fd` is readable or the deadline passes; false when it passed.
bool awaitReadable(int fd, Deadline deadline, std::chrono::milliseconds slice)
{
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() < 0)
        return false;
    pollfd descriptor { fd, POLLIN, 0 };
    ::poll(&descriptor, 1, static_cast<int>(std::min(left, slice).count()));
    return true;
}

} // namespace

X11Connection::X11Connection(xcb_connection_t* connection, xcb_screen_t* screen, FileDescriptor wake)
    : m_connection(connection)
    , m_screen(screen)
    , m_wake(std::move(wake))
{
}

X11Connection::~X11Connection()
{
    m_stopping = true;
    wakeReader();
    if (m_reader.joinable())
        m_reader.join();
    xcb_disconnect(m_connection);
}

Result<std::shared_ptr<X11Connection>> X11Connection::open(const std::string& displayName)
{
    const char* name = displayName.empty() ? nullptr : displayName.c_str();
    std::string shownName = name ? displayName : std::string(std::getenv("DISPLAY") ? std::getenv("DISPLAY") : "");
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(name, &screenNumber);
    if (int problem = xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return unreachable(shownName, fmt::format("x11: xcb_connect failed with {}", problem));
    }
    xcb_screen_t* screen = nullptr;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int index = 0; screens.rem > 0; ++index, xcb_screen_next(&screens)) {
        if (index == screenNumber)
            screen = screens.data;
    }
    FileDescriptor wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!screen || !wake.valid()) {
        xcb_disconnect(connection);
        return unreachable(shownName, "x11: no screen or no eventfd");
    }
    std::shared_ptr<X11Connection> result(new X11Connection(connection, screen, std::move(wake)));

    // All atoms in one round trip.
    std::array<xcb_intern_atom_cookie_t, x11AtomCount> cookies {};
    for (std::size_t index = 0; index < x11AtomCount; ++index)
        cookies[index] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(atomNames[index].size()),
            atomNames[index].data());
    for (std::size_t index = 0; index < x11AtomCount; ++index) {
        QUILLMAR_TRY_ASSIGN(auto answer, result->answer(cookies[index].sequence));
        if (!answer.reply)
            return unreachable(shownName, fmt::format("x11: interning {} failed", atomNames[index]));
        result->m_atoms[index] = static_cast<xcb_intern_atom_reply_t*>(answer.reply.get())->atom;
    }
    return result;
}

Result<std::shared_ptr<X11Connection>> X11Connection::shared(std::string_view feature)
{
    if (auto session = desktopSession(); session != DesktopSession::x11)
        return Error { "x11.session", sessionRefusal(session, feature), "" };
    static std::mutex mutex;
    static std::weak_ptr<X11Connection> current;
    std::lock_guard lock(mutex);
    if (auto connection = current.lock())
        return connection;
    QUILLMAR_TRY_ASSIGN(auto connection, open(""));
    current = connection;
    return connection;
}

Result<X11Answer> X11Connection::answer(unsigned int sequence, Duration timeout)
{
    xcb_flush(m_connection);
    auto deadline = std::chrono::steady_clock::now() + timeout;
    X11Answer result;
    for (;;) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        // Reads what the server sent so far when no other thread is reading; events read here wait in xcb's
        // queue, so the reading thread is woken to hand them out.
        if (xcb_poll_for_reply(m_connection, sequence, &reply, &error) != 0) {
            wakeReader();
            if (xcb_connection_has_error(m_connection))
                return Error { "x11.broken", "The connection to the X server broke.", "x11: connection error" };
            result.reply.reset(reply);
            result.error.reset(error);
            return result;
        }
        // The reading thread may take the answer off the socket while this one waits, so the wait is cut
        // into short slices that look into xcb's queue again.
        if (!awaitReadable(xcb_get_file_descriptor(m_connection), deadline, std::chrono::milliseconds(2))) {
            wakeReader();
            return Error { "x11.timeout", "The X server didn't answer in time.",
                fmt::format("x11: no answer to request {} within {} ms", sequence,
                    std::chrono::duration_cast<std::chrono::milliseconds>(timeout).count()) };
        }
    }
}

Result<void> X11Connection::roundTrip(Duration timeout)
{
    QUILLMAR_TRY(answer(xcb_get_input_focus(m_connection).sequence, timeout));
    return {};
}

X11Connection::ListenerID X11Connection::addListener(Listener listener)
{
    std::lock_guard lock(m_listenersMutex);
    auto id = m_nextListener++;
    m_listeners.emplace(id, std::move(listener));
    if (!m_reader.joinable())
        m_reader = std::thread([this] { read(); });
    return id;
}

void X11Connection::removeListener(ListenerID id)
{
    std::lock_guard lock(m_listenersMutex);
    m_listeners.erase(id);
}

void X11Connection::wakeReader() const
{
    std::uint64_t one = 1;
    [[maybe_unused]] auto written = ::write(m_wake.get(), &one, sizeof one);
}

void X11Connection::read()
{
    std::array<pollfd, 2> descriptors { pollfd { xcb_get_file_descriptor(m_connection), POLLIN, 0 },
        pollfd { m_wake.get(), POLLIN, 0 } };
    while (!m_stopping) {
        while (auto* event = xcb_poll_for_event(m_connection)) {
            XcbPointer<xcb_generic_event_t> owned(event);
            std::lock_guard lock(m_listenersMutex);
            for (auto& [id, listener] : m_listeners)
                listener(*event);
        }
        if (xcb_connection_has_error(m_connection)) {
            diagnostic("x11: connection broke; events stop");
            return;
        }
        ::poll(descriptors.data(), descriptors.size(), -1);
        std::uint64_t count = 0;
        [[maybe_unused]] auto drained = ::read(m_wake.get(), &count, sizeof count);
    }
}

} // namespace quillmar
