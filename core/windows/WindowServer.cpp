#include "core/windows/WindowServer.h"

namespace quillmar {

std::vector<WindowServer::Info> WindowServer::list(bool onScreenOnly) const
{
    return m_list.list(onScreenOnly ? WindowListScope::onScreenOnly : WindowListScope::all);
}

std::optional<WindowServer::Info> WindowServer::info(std::uint32_t windowNumber) const
{
    return m_list.info(windowNumber);
}

std::optional<WindowServer::Info> WindowServer::normalWindow(Point point) const
{
    return normalWindow(point, list(/*onScreenOnly=*/true), m_list.ownProcessID());
}

std::optional<WindowServer::Info> WindowServer::normalWindow(Point point, const std::vector<Info>& windows,
    std::int32_t ownPid)
{
    for (const auto& window : windows) {
        if (!window.bounds.contains(point))
            continue;
        if (window.layer == 0 && window.alpha > 0 && window.bounds.width >= minimumWindowSide
            && window.bounds.height >= minimumWindowSide && window.ownerPid != ownPid)
            return window;
    }
    return std::nullopt;
}

} // namespace quillmar
