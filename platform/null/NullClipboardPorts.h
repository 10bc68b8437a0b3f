#pragma once

#include "core/desktop/FrontApplications.h"
#include "core/desktop/Keystrokes.h"
#include "core/desktop/Pasteboard.h"
#include "core/desktop/SessionEvents.h"
#include "core/desktop/UserNotices.h"

namespace quillmar {

// The ports of the clipboard history where the system offers nothing: each answers "not here" and changes
// nothing. System factories hand them out for ports without a backend; the command line and the tests use them
// too.

// A pasteboard on a system without one the core can reach: always empty, never changes, refuses writes.
class NullPasteboard final : public Pasteboard {
public:
    std::int64_t changeCount() const override;
    PasteboardReading read() override;
    bool write(const PasteboardWriting& writing) override;
    void clear() override;
};

// No application is ever known to be in front.
class NullFrontApplications final : public FrontApplications {
public:
    std::optional<AppIdentity> frontApplication() const override;
    std::vector<AppIdentity> takeActivations() override;
};

// Nothing can be typed: every key is refused.
class NullKeystrokes final : public Keystrokes {
public:
    bool isAccessibilityTrusted() override;
    bool postKey(std::uint32_t keyCode, std::uint64_t flags) override;
};

// Sleep and lock are never reported.
class NullSessionEvents final : public SessionEvents {
public:
    void startObserving(std::function<void(SessionEvent)> handler) override;
    void stopObserving() override;
};

// Nobody is told anything.
class NullUserNotices final : public UserNotices {
public:
    void show(std::string_view message, std::string_view detail) override;
    void askForAccessibility(std::string_view reason) override;
};

} // namespace quillmar
