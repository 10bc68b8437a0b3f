#include "platform/linux/DBusBuses.h"

namespace quillmar {

namespace {

constexpr int callTimeoutMilliseconds = 2000;

} // namespace

Result<ConnectionHandle> connectToBus(const DBusBuses& buses, BusKind kind)
{
    const std::string& configured = kind == BusKind::system ? buses.systemAddress : buses.sessionAddress;
    std::string address = configured;
    GError* raw = nullptr;
    if (address.empty()) {
        gchar* standard = g_dbus_address_get_for_bus_sync(
            kind == BusKind::system ? G_BUS_TYPE_SYSTEM : G_BUS_TYPE_SESSION, /*cancellable=*/nullptr, &raw);
        if (!standard) {
            GErrorHandle error(raw);
            return Error { "dbus.unreachable", "The message bus can't be reached.", messageOf(error.get()) };
        }
        address = standard;
        g_free(standard);
    }
    auto flags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    ConnectionHandle connection(g_dbus_connection_new_for_address_sync(
        address.c_str(), flags, /*observer=*/nullptr, /*cancellable=*/nullptr, &raw));
    if (!connection) {
        GErrorHandle error(raw);
        return Error { "dbus.unreachable", "The message bus can't be reached.", messageOf(error.get()) };
    }
    return connection;
}

bool roundTrip(GDBusConnection* connection)
{
    VariantHandle reply(g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", "GetId", /*parameters=*/nullptr, G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE,
        callTimeoutMilliseconds, /*cancellable=*/nullptr, /*error=*/nullptr));
    return reply != nullptr;
}

const char* nameOf(BusKind kind)
{
    return kind == BusKind::system ? "system" : "session";
}

} // namespace quillmar
