#pragma once

#include <cstdint>

#include "core/base/FourCharCode.h"
#include "core/desktop/KeyCodes.h"

namespace quillmar {

// The system's event-type numbers for the events features usually ask for. An event tap can only select
// types below 64 (one bit each in its mask).
namespace EventType {
inline constexpr std::uint32_t leftMouseDown = 1;
inline constexpr std::uint32_t leftMouseUp = 2;
inline constexpr std::uint32_t rightMouseDown = 3;
inline constexpr std::uint32_t rightMouseUp = 4;
inline constexpr std::uint32_t mouseMoved = 5;
inline constexpr std::uint32_t leftMouseDragged = 6;
inline constexpr std::uint32_t rightMouseDragged = 7;
inline constexpr std::uint32_t keyDown = 10;
inline constexpr std::uint32_t keyUp = 11;
inline constexpr std::uint32_t flagsChanged = 12;
inline constexpr std::uint32_t scrollWheel = 22;
inline constexpr std::uint32_t otherMouseDown = 25;
inline constexpr std::uint32_t otherMouseUp = 26;
inline constexpr std::uint32_t otherMouseDragged = 27;
} // namespace EventType

// The event-source user data this application stamps on the events it posts, so that its own tap lets
// them through instead of feeding them back to the features that caused them.
inline constexpr std::int64_t ownEventUserData = fourCharCode("QLMR");

// The bit of `type` in a tap mask; 0 for types of 64 and above, which no tap can select.
constexpr std::uint64_t eventMaskBit(std::uint32_t type)
{
    return type < 64 ? std::uint64_t { 1 } << type : 0;
}

// One input event as the core sees it: a plain copy of the fields features read or change.
struct InputEvent {
    // A point in global display coordinates, top-left origin, in points.
    struct Location {
        double x = 0.0;
        double y = 0.0;
        bool operator==(const Location&) const = default;
    };

    std::uint32_t type = 0;    // an EventType number
    std::uint32_t keyCode = 0; // virtual key code, for key events
    std::uint64_t flags = 0;   // EventFlags bits held during the event
    Location location;
    double scrollDeltaX = 0.0; // scroll wheel deltas in points, sign as the system reports them
    double scrollDeltaY = 0.0;
    std::int64_t sourceUserData = 0; // the event source's user-data field; ownEventUserData on our own events
    bool isAutorepeat = false; // a key-down the system repeats while the key is held

    bool operator==(const InputEvent&) const = default;
};

} // namespace quillmar
