#pragma once

#include "core/windows/Accessibility.h"

namespace quillmar {

// Accessibility on a system without a backend: never trusted, every element missing, every write refused.
class UnsupportedAccessibility final : public Accessibility {
public:
    bool isTrusted() const override;
    AXElement applicationElement(std::int32_t pid) override;
    void setMessagingTimeout(AXElement element, Duration timeout) override;
    std::optional<std::int32_t> processID(AXElement element) const override;
    std::optional<AXValue> attribute(AXElement element, std::string_view name) const override;
    bool setAttribute(AXElement element, std::string_view name, const AXValue& value) override;
    std::optional<bool> isAttributeSettable(AXElement element, std::string_view name) const override;
    bool performAction(AXElement element, std::string_view name) override;
    bool canReadWindowNumbers() const override;
    std::optional<std::uint32_t> windowNumber(AXElement window) const override;
};

} // namespace quillmar
