#include "platform/null/NullClipboardPorts.h"

namespace quillmar {

std::int64_t NullPasteboard::changeCount() const
{
    return 0;
}

PasteboardReading NullPasteboard::read()
{
    return {};
}

bool NullPasteboard::write(const PasteboardWriting&)
{
    return false;
}

void NullPasteboard::clear() { }

std::optional<AppIdentity> NullFrontApplications::frontApplication() const
{
    return std::nullopt;
}

std::vector<AppIdentity> NullFrontApplications::takeActivations()
{
    return {};
}

bool NullKeystrokes::isAccessibilityTrusted()
{
    return false;
}

bool NullKeystrokes::postKey(std::uint32_t, std::uint64_t)
{
    return false;
}

void NullSessionEvents::startObserving(std::function<void(SessionEvent)>) { }

void NullSessionEvents::stopObserving() { }

void NullUserNotices::show(std::string_view, std::string_view) { }

void NullUserNotices::askForAccessibility(std::string_view) { }

} // namespace quillmar
