#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/windows/Geometry.h"
#include "core/windows/WindowList.h"
#include "core/windows/WindowServerInfo.h"

namespace quillmar {

// The window server's list with the rules that read it. Any thread.
class WindowServer final {
public:
    using Info = WindowServerInfo;

    // Windows smaller than this in either direction (points) are not treated as ordinary windows.
    static constexpr double minimumWindowSide = 80.0;

    explicit WindowServer(WindowList& list) : m_list(list) { }

    // Front to back; `onScreenOnly` leaves out minimised windows and those of other Spaces.
    std::vector<Info> list(bool onScreenOnly) const;
    std::optional<Info> info(std::uint32_t windowNumber) const;

    // The topmost on-screen window under `point` (top-left global points) that is an ordinary window of
    // another process: layer 0, not transparent, at least 80 × 80 points.
    std::optional<Info> normalWindow(Point point) const;

    // The same rule over a list already read (front to back).
    static std::optional<Info> normalWindow(Point point, const std::vector<Info>& windows, std::int32_t ownPid);

private:
    WindowList& m_list;
};

} // namespace quillmar
