#pragma once

#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/linux/GLibHandles.h"
#include "platform/linux/GMainLoopThread.h"

namespace quillmar {

// The desktop's services, faked on a test bus: owns the names it is given and answers for logind's manager
// (GetSession, GetSessionByPID, Inhibit), the screen saver (Inhibit, UnInhibit) and the notification server
// (Notify) under whichever of those names it owns, recording every call. Sends signals as any of them.
class FakeDesktop final {
public:
    static constexpr const char* logind = "org.freedesktop.login1";
    static constexpr const char* screenSaver = "org.freedesktop.ScreenSaver";
    static constexpr const char* notifications = "org.freedesktop.Notifications";
    static constexpr guint32 screenSaverCookie = 42;
    // The session GetSessionByPID answers with.
    static constexpr const char* sessionOfProcess = "/org/freedesktop/login1/session/_3";

    FakeDesktop(const std::string& address, const std::vector<std::string>& names);
    ~FakeDesktop();

    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;

    // Whether every name was taken and every object exported.
    bool isReady() const { return m_ready; }

    // Sends a signal and waits until the bus has routed it; `parameters` is taken (floating) or null.
    void emit(const std::string& path, const char* interface, const char* member, GVariant* parameters);

    // The parameters of each call of `interface.member` so far, printed by GLib: "('Quillmar', 'why')".
    std::vector<std::string> calls(const std::string& method) const;

    // Waits at most five seconds until `method` has been called `count` times.
    bool waitForCalls(const std::string& method, std::size_t count);

    // The read end of the pipe whose write end the last logind Inhibit handed out, or -1: once every holder
    // has closed the write end, it reads end of file.
    int inhibitPipe() const;

private:
    void handle(const char* interface, const char* method, GVariant* parameters, GDBusMethodInvocation* invocation);

    ConnectionHandle m_connection;
    std::vector<std::string> m_names;
    std::vector<guint> m_objects;
    bool m_ready = false;

    mutable std::mutex m_mutex;
    std::condition_variable m_called;
    std::map<std::string, std::vector<std::string>> m_calls;
    std::vector<int> m_pipes;

    GMainLoopThread m_thread;
};

} // namespace quillmar
