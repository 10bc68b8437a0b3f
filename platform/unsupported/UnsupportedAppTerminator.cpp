#include "platform/unsupported/UnsupportedAppTerminator.h"

namespace quillmar {

bool UnsupportedAppTerminator::terminate(std::int32_t)
{
    return false;
}

bool UnsupportedAppTerminator::isRunning(std::int32_t) const
{
    return true;
}

} // namespace quillmar
