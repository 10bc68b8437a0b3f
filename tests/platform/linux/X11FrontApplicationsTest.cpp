#include <gtest/gtest.h>

#include <unistd.h>

#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/linux/X11FrontApplications.h"
#include "tests/platform/linux/support/XServer.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

constexpr auto deadline = std::chrono::seconds(5);

// Work posted from the backend's thread waits here until the test runs it.
class TestMainQueue final : public MainQueue {
public:
    void post(Task task) override
    {
        std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
        m_posted.notify_one();
    }
    WorkItemHandle postAfter(Duration, Task task) override
    {
        ADD_FAILURE() << "nothing is posted for later";
        post(std::move(task));
        return std::make_shared<WorkItem>();
    }
    bool isMainThread() const override { return std::this_thread::get_id() == m_owner; }

    // Runs posted work until `done` holds; false when the deadline passes first.
    bool runUntil(const std::function<bool()>& done)
    {
        auto until = std::chrono::steady_clock::now() + deadline;
        while (!done()) {
            std::unique_lock lock(m_mutex);
            if (!m_posted.wait_until(lock, until, [this] { return !m_tasks.empty(); }))
                return false;
            auto task = std::move(m_tasks.front());
            m_tasks.pop_front();
            lock.unlock();
            task();
        }
        return true;
    }

private:
    std::thread::id m_owner = std::this_thread::get_id();
    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<Task> m_tasks;
};

// The applications' entries, in a data folder of their own: set before GIO first reads them. GIO keeps an
// entry only when its program is found.
const std::filesystem::path& applicationsHome()
{
    static TemporaryFolder folder;
    static bool written = [] {
        auto applications = folder.path() / "applications";
        std::filesystem::create_directories(applications);
        std::ofstream(applications / "org.example.Editor.desktop")
            << "[Desktop Entry]\nType=Application\nName=Example Editor\nExec=true %F\nStartupWMClass=QuillmarEditor\n";
        std::ofstream(applications / "org.example.Runner.desktop")
            << "[Desktop Entry]\nType=Application\nName=Test Runner\nExec="
            << std::filesystem::read_symlink("/proc/self/exe").string() << "\n";
        setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", (folder.path() / "none").c_str(), 1);
        return true;
    }();
    EXPECT_TRUE(written);
    return folder.path();
}

class X11FrontApplicationsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        applicationsHome();
        m_server = testing::sharedXServer();
        ASSERT_NE(m_server, nullptr);
        auto connection = X11Connection::open(m_server->display());
        ASSERT_TRUE(connection) << connection.error().message;
        m_front = X11FrontApplications::create(std::move(connection).value(), m_queue);
    }

    X11Connection& server() { return m_server->connection(); }

    void setProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint8_t format, const std::string& bytes)
    {
        xcb_change_property(server().raw(), XCB_PROP_MODE_REPLACE, window, property, type, format,
            static_cast<std::uint32_t>(bytes.size() / (format / 8)), bytes.data());
    }

    xcb_window_t window()
    {
        auto id = xcb_generate_id(server().raw());
        xcb_create_window(server().raw(), XCB_COPY_FROM_PARENT, id, server().root(), 0, 0, 1, 1, 0,
            XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        return id;
    }

    void activate(xcb_window_t window, xcb_atom_t type = XCB_ATOM_WINDOW)
    {
        setProperty(server().root(), server().atom(X11Atom::netActiveWindow), type, 32,
            std::string(reinterpret_cast<const char*>(&window), sizeof window));
        EXPECT_TRUE(server().roundTrip());
    }

    bool awaitFront(const std::optional<AppIdentity>& expected)
    {
        return m_queue.runUntil([&] { return m_front->frontApplication() == expected; });
    }

    static std::string pid(std::uint32_t value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); }

    testing::XServer* m_server = nullptr;
    TestMainQueue m_queue;
    std::unique_ptr<X11FrontApplications> m_front;
};

TEST_F(X11FrontApplicationsTest, FollowsTheActiveWindowAndNamesItsApplication)
{
    const auto netWmPid = server().atom(X11Atom::netWmPid);
    const AppIdentity editor { "org.example.Editor", "Example Editor" };
    const AppIdentity runner { "org.example.Runner", "Test Runner" };
    const AppIdentity unlisted { "Unlisted", "Unlisted" };
    // Each step sets a window's properties (pid, WM_CLASS; "" leaves one out) and activates it.
    struct Step {
        const char* what;
        std::string pid;
        std::string wmClass;
        std::optional<AppIdentity> expected;
        xcb_atom_t pidType = XCB_ATOM_CARDINAL;
        xcb_atom_t classType = XCB_ATOM_STRING;
        bool vanished = false;
        xcb_atom_t activeType = XCB_ATOM_WINDOW;
    };
    const std::vector<Step> steps {
        { "by StartupWMClass", pid(1), std::string("editor\0QuillmarEditor\0", 22), editor },
        { "no pid, no class", "", "", std::nullopt },
        { "by the process's executable", pid(static_cast<std::uint32_t>(getpid())), std::string("other\0Other\0", 12), runner },
        { "properties of the wrong types", "abcd", std::string("x\0Y\0", 4), std::nullopt, XCB_ATOM_STRING, XCB_ATOM_ATOM },
        { "by WM_CLASS alone", "", std::string("unlisted\0Unlisted\0", 18), unlisted },
        { "a window that has gone", "", std::string("editor\0QuillmarEditor\0", 22), std::nullopt, XCB_ATOM_CARDINAL,
            XCB_ATOM_STRING, true },
        { "by StartupWMClass again", "", std::string("editor\0QuillmarEditor", 21), editor },
        { "an active window of the wrong type", "", std::string("editor\0QuillmarEditor\0", 22), std::nullopt,
            XCB_ATOM_CARDINAL, XCB_ATOM_STRING, false, XCB_ATOM_CARDINAL },
    };
    std::vector<AppIdentity> activations;
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        auto id = window();
        if (!step.pid.empty())
            setProperty(id, netWmPid, step.pidType, 32, step.pid);
        if (!step.wmClass.empty())
            setProperty(id, XCB_ATOM_WM_CLASS, step.classType, step.classType == XCB_ATOM_STRING ? 8 : 32,
                step.classType == XCB_ATOM_STRING ? step.wmClass : pid(XCB_ATOM_STRING));
        if (step.vanished)
            xcb_destroy_window(server().raw(), id);
        activate(id, step.activeType);
        EXPECT_TRUE(awaitFront(step.expected));
        if (step.expected)
            activations.push_back(*step.expected);
    }
    EXPECT_EQ(m_front->takeActivations(), activations);
    EXPECT_TRUE(m_front->takeActivations().empty());
}

} // namespace
} // namespace quillmar
