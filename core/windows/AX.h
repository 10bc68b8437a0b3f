#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime/Clock.h"
#include "core/windows/Accessibility.h"
#include "core/windows/Geometry.h"

namespace quillmar {

// Typed reads over the accessibility port, and the lookups that find a window's element. Each reader returns
// none on any failure, a missing attribute or a value of another type. Points and frames are top-left.
class AX final {
public:
    // Every element this code creates waits this long for its application before a call fails.
    static constexpr Duration messagingTimeout = seconds(0.35);

    explicit AX(Accessibility& accessibility) : m_ax(accessibility) { }

    Accessibility& port() const { return m_ax; }

    std::optional<std::string> string(AXElement element, std::string_view name) const;
    std::optional<bool> boolean(AXElement element, std::string_view name) const;
    std::optional<Point> point(AXElement element, std::string_view name) const;
    std::optional<Size> size(AXElement element, std::string_view name) const;
    std::optional<AXElement> element(AXElement element, std::string_view name) const;
    std::optional<std::vector<AXElement>> elements(AXElement element, std::string_view name) const;
    std::optional<AXValue> value(AXElement element, std::string_view name) const;

    // AXPosition with AXSize; none when either is missing.
    std::optional<Rect> frame(AXElement window) const;

    // The application element of `pid`, with the messaging time-out set.
    AXElement application(std::int32_t pid, Duration timeout = messagingTimeout) const;

    // The window that holds `element` of process `pid`: the element itself when its role is "AXWindow", else
    // its "AXWindow" attribute, else its top-level element when that is a window, else the first window
    // among its ancestors below the application. None when there is none.
    std::optional<AXElement> window(AXElement element, std::int32_t pid) const;

    // The window of `pid` whose window-server number is `id`. Where window numbers cannot be read, the
    // window whose frame is nearest `frameHint` (top-left), within `frameHintTolerance` points summed over
    // x, y, width and height. `timeout` applies to the application element.
    static constexpr double frameHintTolerance = 16.0;
    std::optional<AXElement> window(std::int32_t pid, std::uint32_t id, std::optional<Rect> frameHint,
        Duration timeout = messagingTimeout) const;

private:
    Accessibility& m_ax;
};

} // namespace quillmar
