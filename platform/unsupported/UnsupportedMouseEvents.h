#pragma once

#include "core/windows/MouseEvents.h"

namespace quillmar {

// Pointer events on a system without a backend: no button is ever down and nothing can be posted.
class UnsupportedMouseEvents final : public MouseEvents {
public:
    bool isButtonDown(MouseButton button) const override;
    bool post(const InputEvent& event) override;
    void warpPointer(InputEvent::Location location) override;
};

} // namespace quillmar
