#pragma once

#include <cstdint>
#include <functional>

#include "core/windows/WindowEntry.h"

namespace quillmar {

// Operations on other applications' windows, shared by the switcher and the Dock previews. Main thread.
// Each returns false when the window or application could not be reached; the window is then left as it is.
class WindowActions {
public:
    virtual ~WindowActions() = default;

    // Raises the window and brings its application to the front.
    virtual bool focus(const WindowEntry& entry) = 0;
    // Presses the window's close button.
    virtual bool close(const WindowEntry& entry) = 0;
    // Minimises or restores the window, then calls `then` on the main queue with whether it worked.
    virtual void setMinimized(const WindowEntry& entry, bool minimized, std::function<void(bool)> then) = 0;
    // Brings the application to the front without choosing a window.
    virtual bool activateApp(std::int32_t pid) = 0;
};

} // namespace quillmar
