#pragma once

namespace quillmar {

// The system monitor's readouts in the menu bar.
class MenuBarReadouts {
public:
    virtual ~MenuBarReadouts() = default;

    // Shows or hides the readouts to match the switches and preferences.
    virtual void apply() = 0;
};

} // namespace quillmar
