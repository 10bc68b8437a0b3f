#include "core/switcher/SwitcherItem.h"

namespace quillmar {

std::string SwitcherItem::id() const
{
    if (windowNumber)
        return "w" + std::to_string(*windowNumber);
    return "a" + std::to_string(pid);
}

} // namespace quillmar
