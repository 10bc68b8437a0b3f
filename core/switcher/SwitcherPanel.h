#pragma once

#include <optional>

#include "core/windows/Geometry.h"

namespace quillmar {

class SwitcherModel;

// The switcher's panel of cards. Main thread.
class SwitcherPanel {
public:
    virtual ~SwitcherPanel() = default;

    // The bounds of the display the panel would appear on (the one with the pointer), in top-left global
    // coordinates, in points; none when unknown.
    virtual std::optional<Rect> screenFrame() = 0;

    // Puts the panel on screen for `model`, which outlives it; the panel redraws on the model's changes
    // until `hide`. A second call while shown only brings it forward.
    virtual void show(SwitcherModel& model) = 0;
    // No effect when not shown.
    virtual void hide() = 0;
};

} // namespace quillmar
