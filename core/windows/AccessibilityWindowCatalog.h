#pragma once

#include <cstdint>
#include <vector>

#include "core/windows/AX.h"
#include "core/windows/RunningApplications.h"
#include "core/windows/WindowCatalog.h"
#include "core/windows/WindowList.h"

namespace quillmar {

// The window catalogue over the ports: the window server's list, which knows every window and its Space,
// joined with each application's accessibility windows, which know which windows are standard ones, their
// titles and whether they are minimised. Main thread.
class AccessibilityWindowCatalog final : public WindowCatalog {
public:
    AccessibilityWindowCatalog(RunningApplications& applications, WindowList& windows, Accessibility& accessibility);

    std::vector<AppSnapshot> runningApps() const override;

    // In the window server's front-to-back order. A window the accessibility layer lists is kept when it is a
    // standard window; a window it cannot see (it is on another Space) is kept when the server lists it off
    // screen as an ordinary window of at least 80 × 80 points with a title.
    std::vector<WindowEntry> windows(const std::vector<AppSnapshot>& apps, WindowCatalogOptions options) const override;

    // The accessibility windows of `pid` whose subrole is "AXStandardWindow".
    std::vector<AXElement> standardWindows(std::int32_t pid) const;

private:
    RunningApplications& m_applications;
    WindowList& m_windows;
    AX m_ax;
};

} // namespace quillmar
