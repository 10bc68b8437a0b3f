#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "core/windows/Geometry.h"

namespace quillmar {

// An opaque reference to one accessibility element: an application, a window, a button. The backend hands
// out the same value whenever it is asked about the same element, so == tells whether two references name
// one element. Zero is no element.
struct AXElement {
    std::uint64_t id = 0;

    bool isNull() const { return id == 0; }
    friend bool operator==(const AXElement&, const AXElement&) = default;
};

// One attribute value as the accessibility layer carries it. Points and sizes are in the top-left
// (y down) global space.
using AXValue = std::variant<bool, double, std::string, Point, Size, AXElement, std::vector<AXElement>>;

// The attribute and action names this code reads and writes.
namespace AXName {
inline constexpr const char* role = "AXRole";
inline constexpr const char* subrole = "AXSubrole";
inline constexpr const char* title = "AXTitle";
inline constexpr const char* position = "AXPosition";
inline constexpr const char* size = "AXSize";
inline constexpr const char* minimized = "AXMinimized";
inline constexpr const char* fullScreen = "AXFullScreen";
inline constexpr const char* focusedWindow = "AXFocusedWindow";
inline constexpr const char* mainWindow = "AXMainWindow";
inline constexpr const char* windows = "AXWindows";
inline constexpr const char* window = "AXWindow";
inline constexpr const char* topLevelElement = "AXTopLevelUIElement";
inline constexpr const char* parent = "AXParent";
inline constexpr const char* closeButton = "AXCloseButton";
inline constexpr const char* enhancedInterface = "AXEnhancedUserInterface";
inline constexpr const char* main = "AXMain";
inline constexpr const char* frontmost = "AXFrontmost";

inline constexpr const char* windowRole = "AXWindow";
inline constexpr const char* standardWindowSubrole = "AXStandardWindow";
inline constexpr const char* floatingWindowSubrole = "AXFloatingWindow";

inline constexpr const char* raiseAction = "AXRaise";
inline constexpr const char* pressAction = "AXPress";
} // namespace AXName

} // namespace quillmar
