#include "core/clipboard/SystemClipboardPorts.h"
#include "platform/null/NullClipboardPorts.h"

namespace quillmar {

SystemClipboardPorts makeSystemClipboardPorts(MainQueue&)
{
    SystemClipboardPorts ports;
    ports.pasteboard = std::make_unique<NullPasteboard>();
    ports.frontApplications = std::make_unique<NullFrontApplications>();
    ports.keystrokes = std::make_unique<NullKeystrokes>();
    ports.sessionEvents = std::make_unique<NullSessionEvents>();
    ports.notices = std::make_unique<NullUserNotices>();
    return ports;
}

} // namespace quillmar
