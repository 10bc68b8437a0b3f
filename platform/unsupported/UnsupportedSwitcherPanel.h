#pragma once

#include "core/switcher/SwitcherPanel.h"

namespace quillmar {

// No panel on this system: the switcher still switches on a quick trigger-Tab-release, and shows nothing.
class UnsupportedSwitcherPanel final : public SwitcherPanel {
public:
    std::optional<Rect> screenFrame() override;
    void show(SwitcherModel& model) override;
    void hide() override;
};

} // namespace quillmar
