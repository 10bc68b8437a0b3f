#pragma once

#include <cstdint>
#include <string>

#include "core/windows/Geometry.h"

namespace quillmar {

// One window of a running application: the window list joined with the application's accessibility windows.
// `frame` is top-left (y down), in global coordinates.
struct WindowEntry {
    std::uint32_t windowNumber = 0;
    std::int32_t pid = 0;
    std::string appName;
    std::string title;
    Rect frame;
    bool isMinimized = false;
    bool isOnCurrentSpace = true;

    friend bool operator==(const WindowEntry&, const WindowEntry&) = default;
};

} // namespace quillmar
