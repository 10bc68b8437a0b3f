#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/switcher/SwitcherItem.h"

namespace quillmar {

// One application's cards, in the order the switcher shows them.
struct SwitcherGroup {
    std::int32_t pid = 0;
    std::string appName;
    bool isFrontmost = false;
    std::vector<SwitcherItem> items;

    friend bool operator==(const SwitcherGroup&, const SwitcherGroup&) = default;
};

} // namespace quillmar
