#pragma once

#include "core/eventtap/EventTapSource.h"

namespace quillmar {

// Event taps on a system that has none: nothing is created or posted, and input access is never trusted,
// so the shared tap keeps both masks at zero.
class UnsupportedEventTapSource final : public EventTapSource {
public:
    bool createTap(TapKind kind, std::uint64_t mask, EventTapSink& sink) override;
    void removeTap(TapKind kind) override;
    void enableTap(TapKind kind) override;
    bool postEvent(const InputEvent& event) override;
    bool isAccessibilityTrusted() const override;
};

} // namespace quillmar
