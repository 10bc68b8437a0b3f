#include "platform/linux/X11FrontApplications.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "core/base/Diagnostics.h"
#include "platform/linux/X11Session.h"

namespace quillmar {

namespace {

// Activations kept for a caller that stops taking them.
constexpr std::size_t maxActivations = 64;
constexpr std::string_view desktopSuffix = ".desktop";

bool equalIgnoringCase(std::string_view left, std::string_view right)
{
    return left.size() == right.size()
        && std::equal(left.begin(), left.end(), right.begin(), [](char a, char b) {
               return (a >= 'A' && a <= 'Z' ? a + 32 : a) == (b >= 'A' && b <= 'Z' ? b + 32 : b);
           });
}

std::string executableOf(std::uint32_t pid)
{
    std::error_code error;
    auto target = std::filesystem::read_symlink("/proc/" + std::to_string(pid) + "/exe", error);
    return error ? std::string() : target.filename().string();
}

std::string executableName(const char* commandOrPath)
{
    return commandOrPath ? std::filesystem::path(commandOrPath).filename().string() : std::string();
}

AppIdentity identityOf(GAppInfo* info)
{
    std::string id = g_app_info_get_id(info) ? g_app_info_get_id(info) : "";
    if (id.size() > desktopSuffix.size() && id.ends_with(desktopSuffix))
        id.resize(id.size() - desktopSuffix.size());
    const char* name = g_app_info_get_name(info);
    return { id, name ? name : id };
}

// The .desktop entry for the window: by StartupWMClass first, then by the executable's name.
std::optional<AppIdentity> desktopEntry(const X11FrontApplications::WindowFacts& facts, const std::string& executable)
{
    GList* all = g_app_info_get_all();
    std::optional<AppIdentity> byClass;
    std::optional<AppIdentity> byExecutable;
    for (GList* item = all; item && !byClass; item = item->next) {
        auto* info = static_cast<GAppInfo*>(item->data);
        if (!G_IS_DESKTOP_APP_INFO(info))
            continue;
        const char* wmClass = g_desktop_app_info_get_startup_wm_class(G_DESKTOP_APP_INFO(info));
        if (wmClass && *wmClass
            && ((!facts.className.empty() && equalIgnoringCase(wmClass, facts.className))
                || (!facts.instance.empty() && equalIgnoringCase(wmClass, facts.instance))))
            byClass = identityOf(info);
        else if (!byExecutable && !executable.empty()
            && equalIgnoringCase(executableName(g_app_info_get_executable(info)), executable))
            byExecutable = identityOf(info);
    }
    g_list_free_full(all, g_object_unref);
    return byClass ? byClass : byExecutable;
}

} // namespace

X11FrontApplications::X11FrontApplications(std::shared_ptr<X11Connection> connection, MainQueue& mainQueue)
    : m_connection(std::move(connection))
    , m_mainQueue(mainQueue)
{
}

Result<std::unique_ptr<X11FrontApplications>> X11FrontApplications::create(MainQueue& mainQueue)
{
    if (desktopSession() != DesktopSession::x11)
        return Error { "front.session", "The front application is known only in an X11 session for now.", "" };
    QUILLMAR_TRY_ASSIGN(auto connection, X11Connection::shared("The front application"));
    return create(std::move(connection), mainQueue);
}

std::unique_ptr<X11FrontApplications> X11FrontApplications::create(std::shared_ptr<X11Connection> connection,
    MainQueue& mainQueue)
{
    std::unique_ptr<X11FrontApplications> front(new X11FrontApplications(std::move(connection), mainQueue));
    auto* self = front.get();
    auto root = self->m_connection->root();
    auto activeAtom = self->m_connection->atom(X11Atom::netActiveWindow);
    self->m_listener = self->m_connection->addListener([self, root, activeAtom](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY)
            return;
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.window != root || notify.atom != activeAtom)
            return;
        std::lock_guard lock(self->m_mutex);
        self->m_dirty = true;
        self->m_wake.notify_one();
    });
    // Add property changes to what this connection already hears from the root, rather than replace it.
    auto* raw = self->m_connection->raw();
    std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    if (auto attributes = self->m_connection->answer(xcb_get_window_attributes(raw, root).sequence);
        attributes && attributes.value().reply)
        mask |= static_cast<xcb_get_window_attributes_reply_t*>(attributes.value().reply.get())->your_event_mask;
    xcb_change_window_attributes(raw, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(raw);
    self->m_worker = std::thread([self] { self->work(); });
    return front;
}

X11FrontApplications::~X11FrontApplications()
{
    m_connection->removeListener(m_listener);
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
        m_wake.notify_one();
    }
    m_worker.join();
    m_guard.end();
}

std::optional<AppIdentity> X11FrontApplications::frontApplication() const
{
    m_mainQueue.assertMainThread("X11FrontApplications");
    return m_front;
}

std::vector<AppIdentity> X11FrontApplications::takeActivations()
{
    m_mainQueue.assertMainThread("X11FrontApplications");
    return std::exchange(m_activations, {});
}

void X11FrontApplications::work()
{
    auto token = m_guard.token();
    std::optional<AppIdentity> last;
    bool first = true;
    for (;;) {
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_dirty || m_stopping; });
            if (m_stopping)
                return;
            m_dirty = false;
        }
        auto front = lookUp();
        if (!first && front == last)
            continue;
        first = false;
        last = front;
        token.post(m_mainQueue, [this, front] { deliver(front); });
    }
}

void X11FrontApplications::deliver(std::optional<AppIdentity> front)
{
    if (front == m_front)
        return;
    m_front = front;
    if (!front)
        return;
    if (m_activations.size() == maxActivations)
        m_activations.erase(m_activations.begin());
    m_activations.push_back(*front);
}

std::optional<AppIdentity> X11FrontApplications::lookUp()
{
    auto window = activeWindow();
    if (!window)
        return std::nullopt;
    auto windowFacts = facts(*window);
    return windowFacts ? identify(*windowFacts) : std::nullopt;
}

std::optional<xcb_window_t> X11FrontApplications::activeWindow()
{
    auto* raw = m_connection->raw();
    auto answer = m_connection->answer(xcb_get_property(raw, 0, m_connection->root(),
        m_connection->atom(X11Atom::netActiveWindow), XCB_ATOM_WINDOW, 0, 1).sequence);
    if (!answer || !answer.value().reply)
        return std::nullopt;
    auto* reply = static_cast<xcb_get_property_reply_t*>(answer.value().reply.get());
    if (reply->type != XCB_ATOM_WINDOW || reply->format != 32 || xcb_get_property_value_length(reply) != 4)
        return std::nullopt;
    xcb_window_t window = 0;
    std::memcpy(&window, xcb_get_property_value(reply), sizeof window);
    return window == XCB_NONE ? std::nullopt : std::optional(window);
}

std::optional<X11FrontApplications::WindowFacts> X11FrontApplications::facts(xcb_window_t window)
{
    auto* raw = m_connection->raw();
    // Both questions at once; a window that has gone answers both with an error.
    auto pidSequence = xcb_get_property(raw, 0, window, m_connection->atom(X11Atom::netWmPid), XCB_ATOM_CARDINAL, 0, 1).sequence;
    auto classSequence = xcb_get_property(raw, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256).sequence;
    auto pidAnswer = m_connection->answer(pidSequence);
    auto classAnswer = m_connection->answer(classSequence);
    if (!pidAnswer || !classAnswer || pidAnswer.value().error || classAnswer.value().error)
        return std::nullopt;
    WindowFacts facts;
    if (auto* reply = static_cast<xcb_get_property_reply_t*>(pidAnswer.value().reply.get());
        reply && reply->type == XCB_ATOM_CARDINAL && reply->format == 32 && xcb_get_property_value_length(reply) == 4) {
        std::uint32_t pid = 0;
        std::memcpy(&pid, xcb_get_property_value(reply), sizeof pid);
        if (pid != 0)
            facts.pid = pid;
    }
    if (auto* reply = static_cast<xcb_get_property_reply_t*>(classAnswer.value().reply.get());
        reply && reply->type == XCB_ATOM_STRING && reply->format == 8) {
        // Two strings, each ending with NUL; the last one's NUL may be missing.
        std::string value(static_cast<const char*>(xcb_get_property_value(reply)),
            static_cast<std::size_t>(xcb_get_property_value_length(reply)));
        auto end = value.find('\0');
        facts.instance = value.substr(0, end);
        if (end != std::string::npos) {
            auto rest = value.substr(end + 1);
            facts.className = rest.substr(0, rest.find('\0'));
        }
    }
    return facts;
}

std::optional<AppIdentity> X11FrontApplications::identify(const WindowFacts& facts)
{
    std::string executable = facts.pid ? executableOf(*facts.pid) : std::string();
    if (executable.empty())
        executable = facts.className;
    if (auto entry = desktopEntry(facts, executable))
        return entry;
    const auto& name = facts.className.empty() ? facts.instance : facts.className;
    if (name.empty())
        return std::nullopt;
    return AppIdentity { name, name };
}

} // namespace quillmar
