#include <cstdlib>

#include "core/base/Diagnostics.h"
#include "core/clipboard/SystemClipboardPorts.h"
#include "platform/linux/DBusSessionEvents.h"
#include "platform/linux/DBusUserNotices.h"
#include "platform/linux/X11FrontApplications.h"
#include "platform/linux/X11Keystrokes.h"
#include "platform/linux/X11Pasteboard.h"
#include "platform/null/NullClipboardPorts.h"

namespace quillmar {

SystemClipboardPorts makeSystemClipboardPorts(MainQueue& mainQueue)
{
    SystemClipboardPorts ports;
    // The CLIPBOARD selection in an X11 session; elsewhere the history sees an empty clipboard, and the
    // refusal's sentence is what X11Pasteboard::create gives to a front end that shows it.
    if (auto pasteboard = X11Pasteboard::create()) {
        ports.pasteboard = std::move(pasteboard).value();
    } else {
        diagnostic("clipboard: {} ({})", pasteboard.error().message, pasteboard.error().context);
        ports.pasteboard = std::make_unique<NullPasteboard>();
    }
    // The front application and the paste's keystrokes: X11 too, each its Null twin elsewhere.
    if (auto front = X11FrontApplications::create(mainQueue)) {
        ports.frontApplications = std::move(front).value();
    } else {
        diagnostic("clipboard: {} ({})", front.error().message, front.error().context);
        ports.frontApplications = std::make_unique<NullFrontApplications>();
    }
    if (auto keystrokes = X11Keystrokes::create()) {
        ports.keystrokes = std::move(keystrokes).value();
    } else {
        diagnostic("clipboard: {} ({})", keystrokes.error().message, keystrokes.error().context);
        ports.keystrokes = std::make_unique<NullKeystrokes>();
    }
    // Sleep, lock and notices over D-Bus.
    const char* sessionId = std::getenv("XDG_SESSION_ID");
    ports.sessionEvents = std::make_unique<DBusSessionEvents>(mainQueue, DBusBuses {}, sessionId ? sessionId : "");
    ports.notices = std::make_unique<DBusUserNotices>(DBusBuses {});
    return ports;
}

} // namespace quillmar
