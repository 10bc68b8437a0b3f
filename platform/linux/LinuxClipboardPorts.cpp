#include "core/base/Diagnostics.h"
#include "core/clipboard/SystemClipboardPorts.h"
#include "platform/linux/X11Pasteboard.h"
#include "platform/null/NullClipboardPorts.h"

namespace quillmar {

SystemClipboardPorts makeSystemClipboardPorts()
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
    ports.frontApplications = std::make_unique<NullFrontApplications>();
    ports.sessionEvents = std::make_unique<NullSessionEvents>();
    return ports;
}

} // namespace quillmar
