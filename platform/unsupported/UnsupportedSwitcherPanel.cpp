#include "platform/unsupported/UnsupportedSwitcherPanel.h"

namespace quillmar {

std::optional<Rect> UnsupportedSwitcherPanel::screenFrame()
{
    return std::nullopt;
}

void UnsupportedSwitcherPanel::show(SwitcherModel&) { }

void UnsupportedSwitcherPanel::hide() { }

} // namespace quillmar
