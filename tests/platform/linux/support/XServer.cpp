#include "tests/platform/linux/support/XServer.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xtest.h>

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace quillmar::testing {

namespace {

constexpr auto startTimeout = std::chrono::seconds(10);

// The display number Xvfb writes to the -displayfd pipe once it accepts clients.
std::optional<std::string> readDisplayNumber(int fd, ChildProcess::Deadline deadline)
{
    std::string text;
    while (text.find('\n') == std::string::npos) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd descriptor { fd, POLLIN, 0 };
        if (left.count() <= 0 || ::poll(&descriptor, 1, static_cast<int>(left.count())) <= 0)
            return std::nullopt;
        char chunk[32];
        auto count = ::read(fd, chunk, sizeof chunk);
        if (count <= 0)
            return std::nullopt;
        text.append(chunk, static_cast<std::size_t>(count));
    }
    return text.substr(0, text.find('\n'));
}

} // namespace

std::unique_ptr<XServer> XServer::start(WindowManager manager)
{
    if (!isInstalled("Xvfb")) {
        ADD_FAILURE() << "Xvfb isn't installed: run scripts/install-deps (package xvfb).";
        return nullptr;
    }
    int pipe[2];
    if (::pipe2(pipe, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipe for Xvfb's -displayfd";
        return nullptr;
    }
    std::unique_ptr<XServer> server(new XServer());
    if (auto child = ChildProcess::start({ "Xvfb", "-displayfd", std::to_string(pipe[1]), "-nolisten", "tcp",
                                             "-screen", "0", "1280x800x24", "-noreset" },
            {}, pipe[1]))
        server->m_server.emplace(std::move(*child));
    ::close(pipe[1]);
    auto deadline = std::chrono::steady_clock::now() + startTimeout;
    auto number = server->m_server ? readDisplayNumber(pipe[0], deadline) : std::nullopt;
    ::close(pipe[0]);
    if (!number) {
        ADD_FAILURE() << "Xvfb didn't report a display within 10 s";
        return nullptr;
    }
    server->m_display = ":" + *number;
    auto connection = X11Connection::open(server->m_display);
    if (!connection) {
        ADD_FAILURE() << "can't connect to Xvfb on " << server->m_display << ": " << connection.error().context;
        return nullptr;
    }
    server->m_connection = std::move(connection).value();
    if (manager == WindowManager::openbox) {
        if (!isInstalled("openbox")) {
            ADD_FAILURE() << "openbox isn't installed: run scripts/install-deps (package openbox).";
            return nullptr;
        }
        if (auto child = ChildProcess::start({ "openbox", "--sm-disable" }, { server->environment() }))
            server->m_manager.emplace(std::move(*child));
        if (!server->awaitWindowManager()) {
            ADD_FAILURE() << "openbox didn't take over " << server->m_display << " within 10 s";
            return nullptr;
        }
    }
    return server;
}

XServer::~XServer()
{
    // The clients first, so the server does not outlive a connection that still talks to it.
    m_manager.reset();
    m_connection.reset();
    m_server.reset();
}

bool XServer::awaitWindowManager()
{
    std::mutex mutex;
    std::condition_variable changed;
    bool propertyChanged = false;
    auto* raw = m_connection->raw();
    std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(raw, m_connection->root(), XCB_CW_EVENT_MASK, &mask);
    auto listener = m_connection->addListener([&](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY) {
            std::lock_guard lock(mutex);
            propertyChanged = true;
            changed.notify_all();
        }
    });
    auto deadline = std::chrono::steady_clock::now() + startTimeout;
    bool found = false;
    while (!found && std::chrono::steady_clock::now() < deadline) {
        auto cookie = xcb_get_property(raw, 0, m_connection->root(), m_connection->atom(X11Atom::netSupportingWmCheck),
            XCB_ATOM_WINDOW, 0, 1);
        auto answer = m_connection->answer(cookie.sequence);
        found = answer && answer->reply
            && xcb_get_property_value_length(static_cast<xcb_get_property_reply_t*>(answer->reply.get())) > 0;
        std::unique_lock lock(mutex);
        if (!found)
            changed.wait_until(lock, deadline, [&] { return propertyChanged; });
        propertyChanged = false;
    }
    m_connection->removeListener(listener);
    return found;
}

xcb_keycode_t XServer::keycode(std::uint32_t keysym)
{
    auto* raw = m_connection->raw();
    const auto* setup = xcb_get_setup(raw);
    auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    auto cookie = xcb_get_keyboard_mapping(raw, setup->min_keycode, count);
    auto answer = m_connection->answer(cookie.sequence);
    if (!answer || !answer->reply)
        return 0;
    auto* mapping = static_cast<xcb_get_keyboard_mapping_reply_t*>(answer->reply.get());
    const auto* syms = xcb_get_keyboard_mapping_keysyms(mapping);
    int perKey = mapping->keysyms_per_keycode;
    for (int level = 0; level < perKey; ++level) {
        for (int key = 0; key < count; ++key) {
            if (syms[key * perKey + level] == keysym)
                return static_cast<xcb_keycode_t>(setup->min_keycode + key);
        }
    }
    return 0;
}

void XServer::tap(const std::vector<std::uint32_t>& keysyms)
{
    auto* raw = m_connection->raw();
    std::vector<xcb_keycode_t> keys;
    for (auto keysym : keysyms)
        keys.push_back(keycode(keysym));
    for (auto key : keys)
        xcb_test_fake_input(raw, XCB_KEY_PRESS, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        xcb_test_fake_input(raw, XCB_KEY_RELEASE, *key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    EXPECT_TRUE(m_connection->roundTrip(std::chrono::seconds(5)));
}

bool XServer::run(const std::vector<std::string>& arguments)
{
    return runProgram(arguments, { environment() }, std::chrono::seconds(5)) == std::optional<int>(0);
}

} // namespace quillmar::testing

namespace quillmar::testing {

XServer* sharedXServer()
{
    static std::unique_ptr<XServer> server = XServer::start();
    return server.get();
}

} // namespace quillmar::testing
