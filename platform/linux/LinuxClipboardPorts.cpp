#include <cstdlib>

#include "core/clipboard/SystemClipboardPorts.h"
#include "platform/linux/DBusSessionEvents.h"
#include "platform/linux/DBusUserNotices.h"
#include "platform/null/NullClipboardPorts.h"

namespace quillmar {

SystemClipboardPorts makeSystemClipboardPorts(MainQueue& mainQueue)
{
    // Sleep, lock and notices over D-Bus; the clipboard itself and the front application come with X11.
    const char* sessionId = std::getenv("XDG_SESSION_ID");
    SystemClipboardPorts ports;
    ports.pasteboard = std::make_unique<NullPasteboard>();
    ports.frontApplications = std::make_unique<NullFrontApplications>();
    ports.sessionEvents = std::make_unique<DBusSessionEvents>(mainQueue, DBusBuses {}, sessionId ? sessionId : "");
    ports.notices = std::make_unique<DBusUserNotices>(DBusBuses {});
    return ports;
}

} // namespace quillmar
