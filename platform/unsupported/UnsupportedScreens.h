#pragma once

#include "core/windows/Screens.h"

namespace quillmar {

// Screens on a system without a backend: none, and a main height of 0.
class UnsupportedScreens final : public Screens {
public:
    std::vector<ScreenInfo> screens() const override;
    double mainDisplayHeight() const override;
};

} // namespace quillmar
