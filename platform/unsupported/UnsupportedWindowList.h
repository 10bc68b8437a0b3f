#pragma once

#include "core/windows/WindowList.h"

namespace quillmar {

// A window list on a system without a backend: always empty.
class UnsupportedWindowList final : public WindowList {
public:
    std::vector<WindowServerInfo> list(WindowListScope scope) const override;
    std::optional<WindowServerInfo> info(std::uint32_t windowNumber) const override;
    std::int32_t ownProcessID() const override;
};

} // namespace quillmar
