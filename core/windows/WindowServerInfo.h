#pragma once

#include <cstdint>
#include <string>

#include "core/windows/Geometry.h"

namespace quillmar {

// One window of the window server's list. `bounds` is top-left (y down), in global points.
struct WindowServerInfo {
    std::uint32_t number = 0;
    std::int32_t ownerPid = 0;
    std::string ownerName;
    std::string title;
    std::int64_t layer = 0; // 0 for ordinary application windows
    double alpha = 1.0;
    Rect bounds;

    friend bool operator==(const WindowServerInfo&, const WindowServerInfo&) = default;
};

} // namespace quillmar
