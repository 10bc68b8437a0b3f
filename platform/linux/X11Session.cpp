#include "platform/linux/X11Session.h"

#include <cstdlib>

#include <fmt/format.h>

namespace quillmar {

namespace {

std::optional<std::string> processVariable(const char* name)
{
    const char* value = std::getenv(name);
    if (value == nullptr)
        return std::nullopt;
    return std::string(value);
}

} // namespace

DesktopSession desktopSession(const EnvironmentLookup& environment)
{
    const auto& lookup = environment ? environment : EnvironmentLookup(processVariable);
    auto isSet = [&lookup](const char* name) {
        auto value = lookup(name);
        return value && !value->empty();
    };
    // An X server reachable through DISPLAY serves X clients even inside a Wayland session.
    if (isSet("DISPLAY"))
        return DesktopSession::x11;
    if (isSet("WAYLAND_DISPLAY") || lookup("XDG_SESSION_TYPE") == std::optional<std::string>("wayland"))
        return DesktopSession::wayland;
    return DesktopSession::none;
}

std::string sessionRefusal(DesktopSession session, std::string_view feature)
{
    if (session == DesktopSession::x11)
        return {};
    return fmt::format("{} need an X11 session for now.", feature);
}

} // namespace quillmar
