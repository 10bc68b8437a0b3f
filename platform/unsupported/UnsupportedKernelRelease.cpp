#include "platform/unsupported/UnsupportedKernelRelease.h"

namespace quillmar {

std::optional<std::string> UnsupportedKernelRelease::release() const
{
    return std::nullopt;
}

} // namespace quillmar
