#include "platform/null/NullWindowPorts.h"

namespace quillmar {

bool NullAccessibility::isTrusted() const
{
    return false;
}

AXElement NullAccessibility::applicationElement(std::int32_t)
{
    return {};
}

void NullAccessibility::setMessagingTimeout(AXElement, Duration) { }

std::optional<std::int32_t> NullAccessibility::processID(AXElement) const
{
    return std::nullopt;
}

std::optional<AXValue> NullAccessibility::attribute(AXElement, std::string_view) const
{
    return std::nullopt;
}

bool NullAccessibility::setAttribute(AXElement, std::string_view, const AXValue&)
{
    return false;
}

std::optional<bool> NullAccessibility::isAttributeSettable(AXElement, std::string_view) const
{
    return std::nullopt;
}

bool NullAccessibility::performAction(AXElement, std::string_view)
{
    return false;
}

bool NullAccessibility::canReadWindowNumbers() const
{
    return false;
}

std::optional<std::uint32_t> NullAccessibility::windowNumber(AXElement) const
{
    return std::nullopt;
}

std::vector<WindowServerInfo> NullWindowList::list(WindowListScope) const
{
    return {};
}

std::optional<WindowServerInfo> NullWindowList::info(std::uint32_t) const
{
    return std::nullopt;
}

std::int32_t NullWindowList::ownProcessID() const
{
    return 0;
}

std::vector<ScreenInfo> NullScreens::screens() const
{
    return {};
}

double NullScreens::mainDisplayHeight() const
{
    return 0;
}

std::vector<AppSnapshot> NullRunningApplications::applications() const
{
    return {};
}

std::optional<std::int32_t> NullRunningApplications::frontmostProcess() const
{
    return std::nullopt;
}

bool NullRunningApplications::activate(std::int32_t, std::optional<std::uint32_t>)
{
    return false;
}

void NullHaptics::performAlignment() { }

void NullLayoutHud::show(std::string_view, std::string_view) { }

void NullSnapOverlay::show(const Rect&, const ScreenInfo&) { }

void NullSnapOverlay::hide() { }

bool NullMouseEvents::isButtonDown(MouseButton) const
{
    return false;
}

bool NullMouseEvents::post(const InputEvent&)
{
    return false;
}

void NullMouseEvents::warpPointer(InputEvent::Location) { }

std::optional<double> NullSystemPreferences::number(std::string_view, std::string_view) const
{
    return std::nullopt;
}

} // namespace quillmar
