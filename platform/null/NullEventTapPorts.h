#pragma once

#include "core/eventtap/EventTapSource.h"

namespace quillmar {

// The ports of the shared event tap where the system offers nothing: each answers "not here" and changes
// nothing. System factories hand them out for ports without a backend; the command line and the tests use them
// too.

// Event taps on a system that has none: nothing is created or posted, and input access is never trusted,
// so the shared tap keeps both masks at zero.
class NullEventTapSource final : public EventTapSource {
public:
    bool createTap(TapKind kind, std::uint64_t mask, EventTapSink& sink) override;
    void removeTap(TapKind kind) override;
    void enableTap(TapKind kind) override;
    bool postEvent(const InputEvent& event) override;
    bool isAccessibilityTrusted() const override;
};

} // namespace quillmar
