#pragma once

#include <vector>

#include "core/windows/AppSnapshot.h"
#include "core/windows/WindowEntry.h"

namespace quillmar {

// What the window lists offer. Off-screen windows (minimised ones, those on other Spaces) are included only
// when asked for.
struct WindowCatalogOptions {
    bool includeMinimized = true;
    bool includeOtherSpaces = true;
};

// The catalogue of running applications' windows that the switcher, the command bar's window index and the
// Dock previews read. Main thread.
class WindowCatalog {
public:
    virtual ~WindowCatalog() = default;

    // Applications that can own regular windows, in no particular order.
    virtual std::vector<AppSnapshot> runningApps() const = 0;

    // The windows of `apps`, joining the window server's list with each application's accessibility windows.
    virtual std::vector<WindowEntry> windows(const std::vector<AppSnapshot>& apps, WindowCatalogOptions options) const
        = 0;
};

} // namespace quillmar
