#pragma once

#include "core/windows/SnapOverlay.h"

namespace quillmar {

// The snap outline on a system without a backend: nothing is drawn.
class UnsupportedSnapOverlay final : public SnapOverlay {
public:
    void show(const Rect& frame, const ScreenInfo& screen) override;
    void hide() override;
};

} // namespace quillmar
