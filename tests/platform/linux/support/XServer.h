#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/X11Connection.h"
#include "tests/platform/linux/support/ChildProcess.h"

namespace quillmar::testing {

// A private X server for a test binary: Xvfb on a free display (chosen by the server itself through
// -displayfd), optionally with openbox as window manager. Start it once per binary (see XServerEnvironment);
// it is stopped when destroyed. Also drives input through XTest on a connection of its own.
class XServer final {
public:
    enum class WindowManager { none, openbox };

    // Fails the calling test with a clear message, and gives none, when Xvfb is not installed or the server
    // is not ready within ten seconds.
    static std::unique_ptr<XServer> start(WindowManager manager = WindowManager::none);
    ~XServer();

    // ":42"
    const std::string& display() const { return m_display; }
    // "DISPLAY=:42", for a child's environment.
    std::string environment() const { return "DISPLAY=" + m_display; }
    // The fixture's own connection (a client like any other).
    X11Connection& connection() const { return *m_connection; }

    // The keycode of the key that types `keysym` without modifiers, or at any level; 0 when none.
    xcb_keycode_t keycode(std::uint32_t keysym);

    // Presses the keys in order and releases them in reverse through XTest, then waits until the server
    // has handled it.
    void tap(const std::vector<std::uint32_t>& keysyms);

    // Runs a program against this server within five seconds; true when it exited with 0.
    bool run(const std::vector<std::string>& arguments);

private:
    XServer() = default;
    bool awaitWindowManager();

    std::optional<ChildProcess> m_server;
    std::optional<ChildProcess> m_manager;
    std::string m_display;
    std::shared_ptr<X11Connection> m_connection;
};

} // namespace quillmar::testing

namespace quillmar::testing {

// The test binary's one X server, started on first use and stopped when the binary ends. A test that needs
// it asserts that it is there: XServer::start has already said why it is not.
XServer* sharedXServer();

} // namespace quillmar::testing
