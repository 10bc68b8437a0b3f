#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/windows/WindowServerInfo.h"

namespace quillmar {

// Which windows a list covers: those on screen now, or every window including minimised ones and those
// on other Spaces or desktops. Desktop elements are left out of both.
enum class WindowListScope { onScreenOnly, all };

// The window server's raw list of windows (CGWindowListCopyWindowInfo, or the X11 stacking list). Any thread.
class WindowList {
public:
    virtual ~WindowList() = default;

    // The windows in front-to-back order, the topmost first.
    virtual std::vector<WindowServerInfo> list(WindowListScope scope) const = 0;

    // One window by number; none when it no longer exists.
    virtual std::optional<WindowServerInfo> info(std::uint32_t windowNumber) const = 0;

    // This process's id, whose own windows the window rules pass over.
    virtual std::int32_t ownProcessID() const = 0;
};

} // namespace quillmar
