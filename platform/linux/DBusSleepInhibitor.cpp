#include "platform/linux/DBusSleepInhibitor.h"

#include <string>
#include <utility>

#include <gio/gunixfdlist.h>
#include <unistd.h>

#include "core/base/Diagnostics.h"

namespace quillmar {

namespace {

constexpr const char* screenSaverName = "org.freedesktop.ScreenSaver";
constexpr const char* screenSaverPath = "/org/freedesktop/ScreenSaver";
constexpr int callTimeoutMilliseconds = 1000;

Error unavailable(std::string context)
{
    return Error { "keepAwake.unavailable", "This system can't be kept awake.", std::move(context) };
}

} // namespace

DBusSleepInhibitor::DBusSleepInhibitor(DBusBuses buses)
    : m_buses(std::move(buses))
{
}

DBusSleepInhibitor::~DBusSleepInhibitor()
{
    release();
}

Result<void> DBusSleepInhibitor::inhibit(std::string_view reason)
{
    if (isInhibiting())
        return {};
    std::string why(reason);
    auto screenSaver = inhibitScreenSaver(why);
    if (screenSaver)
        return {};
    diagnostic("sleep inhibitor: no screen saver to hold off idle sleep, trying logind ({})",
        screenSaver.error().context);
    auto logind = inhibitLogind(why);
    if (logind)
        return {};
    diagnostic("sleep inhibitor: logind refused too ({})", logind.error().context);
    return unavailable(screenSaver.error().context + "; " + logind.error().context);
}

Result<void> DBusSleepInhibitor::inhibitScreenSaver(const std::string& reason)
{
    auto connection = connectToBus(m_buses, BusKind::session);
    if (!connection)
        return unavailable(connection.error().context);
    GError* raw = nullptr;
    VariantHandle reply(g_dbus_connection_call_sync(connection->get(), screenSaverName, screenSaverPath,
        screenSaverName, "Inhibit", g_variant_new("(ss)", "Quillmar", reason.c_str()), G_VARIANT_TYPE("(u)"),
        G_DBUS_CALL_FLAGS_NONE, callTimeoutMilliseconds, /*cancellable=*/nullptr, &raw));
    if (!reply) {
        GErrorHandle error(raw);
        return unavailable(messageOf(error.get()));
    }
    guint32 cookie = 0;
    g_variant_get(reply.get(), "(u)", &cookie);
    m_cookie = cookie;
    m_screenSaverConnection = std::move(connection).value();
    return {};
}

Result<void> DBusSleepInhibitor::inhibitLogind(const std::string& reason)
{
    auto connection = connectToBus(m_buses, BusKind::system);
    if (!connection)
        return unavailable(connection.error().context);
    GError* raw = nullptr;
    GUnixFDList* received = nullptr;
    VariantHandle reply(g_dbus_connection_call_with_unix_fd_list_sync(connection->get(), "org.freedesktop.login1",
        "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "Inhibit",
        g_variant_new("(ssss)", "idle:sleep", "Quillmar", reason.c_str(), "block"), G_VARIANT_TYPE("(h)"),
        G_DBUS_CALL_FLAGS_NONE, callTimeoutMilliseconds, /*fd_list=*/nullptr, &received, /*cancellable=*/nullptr,
        &raw));
    FdListHandle descriptors(received);
    if (!reply) {
        GErrorHandle error(raw);
        return unavailable(messageOf(error.get()));
    }
    gint32 index = -1;
    g_variant_get(reply.get(), "(h)", &index);
    // The list closes its own copies when it goes; the hold is the duplicate kept here.
    int hold = descriptors ? g_unix_fd_list_get(descriptors.get(), index, &raw) : -1;
    if (hold < 0) {
        GErrorHandle error(raw);
        return unavailable(descriptors ? messageOf(error.get()) : "logind sent no file descriptor");
    }
    m_logindHold = hold;
    return {};
}

void DBusSleepInhibitor::release()
{
    if (m_cookie && m_screenSaverConnection) {
        GError* raw = nullptr;
        VariantHandle reply(g_dbus_connection_call_sync(m_screenSaverConnection.get(), screenSaverName,
            screenSaverPath, screenSaverName, "UnInhibit", g_variant_new("(u)", *m_cookie), /*reply_type=*/nullptr,
            G_DBUS_CALL_FLAGS_NONE, callTimeoutMilliseconds, /*cancellable=*/nullptr, &raw));
        // Closing the connection below ends the hold anyway.
        if (!reply) {
            GErrorHandle error(raw);
            diagnostic("sleep inhibitor: screen saver refused to end hold {} ({})", *m_cookie, messageOf(error.get()));
        }
    }
    m_cookie.reset();
    m_screenSaverConnection.reset();
    if (m_logindHold >= 0) {
        ::close(m_logindHold);
        m_logindHold = -1;
    }
}

bool DBusSleepInhibitor::isInhibiting() const
{
    return m_cookie.has_value() || m_logindHold >= 0;
}

} // namespace quillmar
