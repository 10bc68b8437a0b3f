#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// The kind of graphical session the process runs in, as its environment tells it.
enum class DesktopSession {
    x11, // DISPLAY names an X server (also under Wayland with its X server)
    wayland, // a Wayland session without an X server to reach
    none, // no graphical session at all
};

using EnvironmentLookup = std::function<std::optional<std::string>(const char* name)>;

// From DISPLAY, WAYLAND_DISPLAY and XDG_SESSION_TYPE; `environment` defaults to the process environment.
DesktopSession desktopSession(const EnvironmentLookup& environment = {});

// The sentence a user reads when `feature` ("Global shortcuts") cannot work in `session`: it names X11
// as the session it needs. Empty for an X11 session.
std::string sessionRefusal(DesktopSession session, std::string_view feature);

} // namespace quillmar
