#include "core/windows/SystemTiling.h"

namespace quillmar {

bool SystemTiling::edgeTilingIsOn(const SystemPreferences& preferences)
{
    if (auto spans = preferences.number("com.apple.spaces", "spans-displays"); spans && *spans != 0)
        return false;
    auto edge = preferences.number("com.apple.WindowManager", "EnableTilingByEdgeDrag");
    if (!edge || *edge != 0)
        return true;
    auto top = preferences.number("com.apple.WindowManager", "EnableTopTilingByEdgeDrag");
    return !top || *top != 0;
}

} // namespace quillmar
