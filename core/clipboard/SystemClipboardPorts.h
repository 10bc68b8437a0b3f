#pragma once

#include <memory>

#include "core/desktop/FrontApplications.h"
#include "core/desktop/Keystrokes.h"
#include "core/desktop/Pasteboard.h"
#include "core/desktop/SessionEvents.h"
#include "core/desktop/UserNotices.h"
#include "core/runtime/MainQueue.h"

namespace quillmar {

// The ports of the clipboard history on the system being built, owned together. The platform layer defines it
// once per system in quillmar_clipboard_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemClipboardPorts {
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<FrontApplications> frontApplications;
    std::unique_ptr<Keystrokes> keystrokes; // the paste after picking an entry
    std::unique_ptr<SessionEvents> sessionEvents;
    std::unique_ptr<UserNotices> notices;
};

// `mainQueue` is where the ports deliver what the system reports (session events, the front application); it
// must outlive them.
SystemClipboardPorts makeSystemClipboardPorts(MainQueue& mainQueue);

} // namespace quillmar
