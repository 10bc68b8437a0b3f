#include "platform/unsupported/UnsupportedMouseEvents.h"

namespace quillmar {

bool UnsupportedMouseEvents::isButtonDown(MouseButton) const
{
    return false;
}

bool UnsupportedMouseEvents::post(const InputEvent&)
{
    return false;
}

void UnsupportedMouseEvents::warpPointer(InputEvent::Location) { }

} // namespace quillmar
