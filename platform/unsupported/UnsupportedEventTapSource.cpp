#include "platform/unsupported/UnsupportedEventTapSource.h"

namespace quillmar {

bool UnsupportedEventTapSource::createTap(TapKind, std::uint64_t, EventTapSink&)
{
    return false;
}

void UnsupportedEventTapSource::removeTap(TapKind) { }

void UnsupportedEventTapSource::enableTap(TapKind) { }

bool UnsupportedEventTapSource::postEvent(const InputEvent&)
{
    return false;
}

bool UnsupportedEventTapSource::isAccessibilityTrusted() const
{
    return false;
}

} // namespace quillmar
