#include "tests/platform/linux/FakeDesktop.h"

#include <chrono>
#include <future>
#include <utility>

#include <gtest/gtest.h>

#include <gio/gunixfdlist.h>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/DBusBuses.h"

namespace quillmar {

namespace {

constexpr int callTimeoutMilliseconds = 5000;
constexpr auto waitLimit = std::chrono::seconds(5);

constexpr const char* introspection = R"(
<node>
  <interface name="org.freedesktop.login1.Manager">
    <method name="GetSession"><arg type="s" direction="in"/><arg type="o" direction="out"/></method>
    <method name="GetSessionByPID"><arg type="u" direction="in"/><arg type="o" direction="out"/></method>
    <method name="Inhibit">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="h" direction="out"/>
    </method>
  </interface>
  <interface name="org.freedesktop.ScreenSaver">
    <method name="Inhibit"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="u" direction="out"/></method>
    <method name="UnInhibit"><arg type="u" direction="in"/></method>
  </interface>
  <interface name="org.freedesktop.Notifications">
    <method name="Notify">
      <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
      <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
    </method>
  </interface>
</node>)";

struct Export {
    const char* path;
    const char* interface;
};

constexpr Export exports[] = {
    { "/org/freedesktop/login1", "org.freedesktop.login1.Manager" },
    { "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver" },
    { "/org/freedesktop/Notifications", "org.freedesktop.Notifications" },
};

bool requestName(GDBusConnection* connection, const std::string& name)
{
    constexpr guint32 doNotQueue = 4;
    constexpr guint32 primaryOwner = 1;
    VariantHandle reply(g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", name.c_str(), doNotQueue), G_VARIANT_TYPE("(u)"),
        G_DBUS_CALL_FLAGS_NONE, callTimeoutMilliseconds, nullptr, nullptr));
    guint32 answer = 0;
    if (reply)
        g_variant_get(reply.get(), "(u)", &answer);
    return answer == primaryOwner;
}

} // namespace

FakeDesktop::FakeDesktop(const std::string& address, const std::vector<std::string>& names)
{
    auto connection = connectToBus(DBusBuses { address, address }, BusKind::session);
    if (!connection)
        return;
    m_connection = std::move(connection).value();

    // Objects are exported from the fake's thread, where their calls then arrive.
    std::promise<bool> exported;
    m_thread.post([this, &exported] {
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(introspection, nullptr);
        static const GDBusInterfaceVTable vtable = {
            [](GDBusConnection*, const gchar*, const gchar*, const gchar* interface, const gchar* method,
                GVariant* parameters, GDBusMethodInvocation* invocation, gpointer data) {
                static_cast<FakeDesktop*>(data)->handle(interface, method, parameters, invocation);
            },
            nullptr, nullptr, {}
        };
        bool ok = node != nullptr;
        for (const auto& item : exports) {
            if (!ok)
                break;
            guint id = g_dbus_connection_register_object(m_connection.get(), item.path,
                g_dbus_node_info_lookup_interface(node, item.interface), &vtable, this, nullptr, nullptr);
            ok = id != 0;
            m_objects.push_back(id);
        }
        if (node)
            g_dbus_node_info_unref(node);
        exported.set_value(ok);
    });
    auto done = exported.get_future();
    if (done.wait_for(waitLimit) != std::future_status::ready || !done.get())
        return;

    for (const auto& name : names) {
        if (!requestName(m_connection.get(), name))
            return;
        m_names.push_back(name);
    }
    m_ready = true;
}

FakeDesktop::~FakeDesktop()
{
    if (m_connection) {
        // Released by hand, so that the next test's fake can take the names at once.
        for (const auto& name : m_names) {
            VariantHandle reply(g_dbus_connection_call_sync(m_connection.get(), "org.freedesktop.DBus",
                "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReleaseName", g_variant_new("(s)", name.c_str()),
                G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, callTimeoutMilliseconds, nullptr, nullptr));
        }
        m_thread.post([this] {
            for (guint id : m_objects)
                if (id != 0)
                    g_dbus_connection_unregister_object(m_connection.get(), id);
        });
    }
    m_thread.stop();
    for (int pipe : m_pipes)
        ::close(pipe);
}

void FakeDesktop::emit(const std::string& path, const char* interface, const char* member, GVariant* parameters)
{
    g_dbus_connection_emit_signal(m_connection.get(), nullptr, path.c_str(), interface, member, parameters, nullptr);
    // The bus answers in order: once it has, it has routed the signal.
    EXPECT_TRUE(roundTrip(m_connection.get()));
}

std::vector<std::string> FakeDesktop::calls(const std::string& method) const
{
    std::lock_guard lock(m_mutex);
    auto found = m_calls.find(method);
    return found == m_calls.end() ? std::vector<std::string>() : found->second;
}

bool FakeDesktop::waitForCalls(const std::string& method, std::size_t count)
{
    std::unique_lock lock(m_mutex);
    return m_called.wait_for(lock, waitLimit, [&] { return m_calls[method].size() >= count; });
}

int FakeDesktop::inhibitPipe() const
{
    std::lock_guard lock(m_mutex);
    return m_pipes.empty() ? -1 : m_pipes.back();
}

void FakeDesktop::handle(const char* interface, const char* method, GVariant* parameters,
    GDBusMethodInvocation* invocation)
{
    std::string name = std::string(interface) + "." + method;
    gchar* printed = g_variant_print(parameters, /*type_annotate=*/TRUE);
    {
        std::lock_guard lock(m_mutex);
        m_calls[name].emplace_back(printed);
    }
    g_free(printed);

    if (name == "org.freedesktop.login1.Manager.GetSession") {
        const gchar* id = nullptr;
        g_variant_get(parameters, "(&s)", &id);
        auto path = std::string("/org/freedesktop/login1/session/") + id;
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", path.c_str()));
    } else if (name == "org.freedesktop.login1.Manager.GetSessionByPID") {
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", sessionOfProcess));
    } else if (name == "org.freedesktop.login1.Manager.Inhibit") {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.Failed", "no pipe");
        } else {
            FdListHandle list(g_unix_fd_list_new());
            g_unix_fd_list_append(list.get(), ends[1], nullptr);
            ::close(ends[1]);
            {
                std::lock_guard lock(m_mutex);
                m_pipes.push_back(ends[0]);
            }
            g_dbus_method_invocation_return_value_with_unix_fd_list(invocation, g_variant_new("(h)", 0), list.get());
        }
    } else if (name == "org.freedesktop.ScreenSaver.Inhibit") {
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", screenSaverCookie));
    } else if (name == "org.freedesktop.Notifications.Notify") {
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", guint32 { 7 }));
    } else {
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    m_called.notify_all();
}

} // namespace quillmar
