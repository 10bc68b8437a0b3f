#include "platform/unsupported/UnsupportedWindowList.h"

namespace quillmar {

std::vector<WindowServerInfo> UnsupportedWindowList::list(WindowListScope) const
{
    return {};
}

std::optional<WindowServerInfo> UnsupportedWindowList::info(std::uint32_t) const
{
    return std::nullopt;
}

std::int32_t UnsupportedWindowList::ownProcessID() const
{
    return 0;
}

} // namespace quillmar
