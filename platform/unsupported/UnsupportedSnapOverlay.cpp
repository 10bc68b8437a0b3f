#include "platform/unsupported/UnsupportedSnapOverlay.h"

namespace quillmar {

void UnsupportedSnapOverlay::show(const Rect&, const ScreenInfo&) { }

void UnsupportedSnapOverlay::hide() { }

} // namespace quillmar
