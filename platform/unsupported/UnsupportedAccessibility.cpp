#include "platform/unsupported/UnsupportedAccessibility.h"

namespace quillmar {

bool UnsupportedAccessibility::isTrusted() const
{
    return false;
}

AXElement UnsupportedAccessibility::applicationElement(std::int32_t)
{
    return {};
}

void UnsupportedAccessibility::setMessagingTimeout(AXElement, Duration) { }

std::optional<std::int32_t> UnsupportedAccessibility::processID(AXElement) const
{
    return std::nullopt;
}

std::optional<AXValue> UnsupportedAccessibility::attribute(AXElement, std::string_view) const
{
    return std::nullopt;
}

bool UnsupportedAccessibility::setAttribute(AXElement, std::string_view, const AXValue&)
{
    return false;
}

std::optional<bool> UnsupportedAccessibility::isAttributeSettable(AXElement, std::string_view) const
{
    return std::nullopt;
}

bool UnsupportedAccessibility::performAction(AXElement, std::string_view)
{
    return false;
}

bool UnsupportedAccessibility::canReadWindowNumbers() const
{
    return false;
}

std::optional<std::uint32_t> UnsupportedAccessibility::windowNumber(AXElement) const
{
    return std::nullopt;
}

} // namespace quillmar
