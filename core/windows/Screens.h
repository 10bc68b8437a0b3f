#pragma once

#include <vector>

#include "core/windows/ScreenInfo.h"

namespace quillmar {

// The displays as the system arranges them. Main thread.
class Screens {
public:
    virtual ~Screens() = default;

    // Every display, the main one (the menu bar's) first. Empty when none can be read.
    virtual std::vector<ScreenInfo> screens() const = 0;

    // The height of the main display's bounds: the line that flips between the top-left and bottom-left
    // spaces (y' = mainHeight - y - height).
    virtual double mainDisplayHeight() const = 0;
};

} // namespace quillmar
