#include "platform/null/NullEventTapPorts.h"

namespace quillmar {

bool NullEventTapSource::createTap(TapKind, std::uint64_t, EventTapSink&)
{
    return false;
}

void NullEventTapSource::removeTap(TapKind) { }

void NullEventTapSource::enableTap(TapKind) { }

bool NullEventTapSource::postEvent(const InputEvent&)
{
    return false;
}

bool NullEventTapSource::isAccessibilityTrusted() const
{
    return false;
}

} // namespace quillmar
