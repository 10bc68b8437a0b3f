#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/runtime/Clock.h"
#include "core/windows/AXElement.h"

namespace quillmar {

// The system's accessibility interface to other applications' windows: element handles, attribute reads and
// writes, actions. On macOS the AXUIElement API; on X11 the window manager's client list, its EWMH
// properties and ConfigureWindow requests, with a window standing for its own element. Every call may block
// up to the element's messaging time-out while the other application answers; each returns none or false
// when it fails, and a failure never changes anything.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    // Whether the user lets this process control other applications. Nothing else works without it.
    virtual bool isTrusted() const = 0;

    // The element of the application running as `pid`. A fresh element has the system's default time-out.
    virtual AXElement applicationElement(std::int32_t pid) = 0;

    // How long calls on `element` wait for its application before they fail.
    virtual void setMessagingTimeout(AXElement element, Duration timeout) = 0;

    // The process that owns `element`; none when it cannot be told.
    virtual std::optional<std::int32_t> processID(AXElement element) const = 0;

    // The value of attribute `name` ("AXPosition"); none when missing, unreadable or timed out.
    virtual std::optional<AXValue> attribute(AXElement element, std::string_view name) const = 0;

    // Writes attribute `name`. False when the application refused or did not answer.
    virtual bool setAttribute(AXElement element, std::string_view name, const AXValue& value) = 0;

    // Whether attribute `name` can be written; none when the question itself failed.
    virtual std::optional<bool> isAttributeSettable(AXElement element, std::string_view name) const = 0;

    // Performs action `name` ("AXRaise", "AXPress") on the element.
    virtual bool performAction(AXElement element, std::string_view name) = 0;

    // The window server's number of a window element. The lookup is a private system function looked up at
    // run time; `canReadWindowNumbers` is false where it is missing, and callers then match by frame.
    virtual bool canReadWindowNumbers() const = 0;
    virtual std::optional<std::uint32_t> windowNumber(AXElement window) const = 0;
};

} // namespace quillmar
