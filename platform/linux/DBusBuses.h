#pragma once

#include <string>

#include "core/base/Result.h"
#include "platform/linux/GLibHandles.h"

namespace quillmar {

enum class BusKind {
    system,
    session,
};

// Where the two message buses are, as D-Bus addresses ("unix:path=/run/dbus/system_bus_socket"). Empty means the
// standard bus of that kind (DBUS_SYSTEM_BUS_ADDRESS, DBUS_SESSION_BUS_ADDRESS or their defaults); tests point
// both at a private bus.
struct DBusBuses {
    std::string systemAddress;
    std::string sessionAddress;
};

// A private connection to the bus of `kind`, authenticated and registered. Blocks while connecting, so call it
// off the main thread or where a short wait is acceptable. An Error (the context says why, for diagnostics)
// when the bus is absent, as in containers. Unlike the shared connections of g_bus_get, a bus that goes away
// does not end the process.
Result<ConnectionHandle> connectToBus(const DBusBuses& buses, BusKind kind);

// Waits for the bus to answer a call, so that everything sent before it (match rules above all) has been
// handled by the bus. False when it does not answer within about two seconds.
bool roundTrip(GDBusConnection* connection);

// "system" or "session", for diagnostics.
const char* nameOf(BusKind kind);

} // namespace quillmar
