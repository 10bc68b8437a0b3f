#include "platform/unsupported/UnsupportedHaptics.h"

namespace quillmar {

void UnsupportedHaptics::performAlignment() { }

} // namespace quillmar
