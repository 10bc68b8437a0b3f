#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "core/base/Result.h"
#include "core/desktop/FrontApplications.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/MainQueue.h"
#include "platform/linux/X11Connection.h"

namespace quillmar {

// The front application of an X11 session: the window manager's _NET_ACTIVE_WINDOW on the root, followed
// through PropertyNotify, named from the window's _NET_WM_PID and WM_CLASS and the application's .desktop
// entry. The reading thread only notes that the property changed; a thread of its own asks the server and
// reads the entries, and posts each change to the main queue. A window that has gone, a property of the
// wrong type or no window manager at all mean "no front application".
class X11FrontApplications final : public FrontApplications {
public:
    // What a window tells about its application.
    struct WindowFacts {
        std::optional<std::uint32_t> pid;
        std::string instance; // WM_CLASS's first string
        std::string className; // WM_CLASS's second string
    };

    static Result<std::unique_ptr<X11FrontApplications>> create(MainQueue& mainQueue);
    static std::unique_ptr<X11FrontApplications> create(std::shared_ptr<X11Connection> connection, MainQueue& mainQueue);
    ~X11FrontApplications() override;
    X11FrontApplications(const X11FrontApplications&) = delete;
    X11FrontApplications& operator=(const X11FrontApplications&) = delete;

    std::optional<AppIdentity> frontApplication() const override;
    std::vector<AppIdentity> takeActivations() override;

    // The application a window's facts name: the .desktop entry whose StartupWMClass is the class (or
    // instance), else the one whose executable is the process's, else WM_CLASS's class for both the name and
    // the identifier; none without any of them. Any thread.
    static std::optional<AppIdentity> identify(const WindowFacts& facts);

private:
    X11FrontApplications(std::shared_ptr<X11Connection> connection, MainQueue& mainQueue);
    void work();
    std::optional<AppIdentity> lookUp();
    std::optional<xcb_window_t> activeWindow();
    std::optional<WindowFacts> facts(xcb_window_t window);
    void deliver(std::optional<AppIdentity> front);

    std::shared_ptr<X11Connection> m_connection;
    MainQueue& m_mainQueue;
    X11Connection::ListenerID m_listener = 0;

    // Between the reading thread, the worker and the destructor.
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_dirty = true; // the first look is at start
    bool m_stopping = false;
    std::thread m_worker;

    // Main thread.
    std::optional<AppIdentity> m_front;
    std::vector<AppIdentity> m_activations;
    LifetimeGuard m_guard;
};

} // namespace quillmar
