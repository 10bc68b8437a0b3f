#include "platform/unsupported/UnsupportedScreens.h"

namespace quillmar {

std::vector<ScreenInfo> UnsupportedScreens::screens() const
{
    return {};
}

double UnsupportedScreens::mainDisplayHeight() const
{
    return 0;
}

} // namespace quillmar
