#include "platform/null/NullAppsPorts.h"

namespace quillmar {

std::optional<std::string> NullKernelRelease::release() const
{
    return std::nullopt;
}

} // namespace quillmar
