#include "platform/unsupported/UnsupportedKernelRelease.h"

namespace quillmar {

std::unique_ptr<KernelRelease> makeSystemKernelRelease()
{
    return std::make_unique<UnsupportedKernelRelease>();
}

} // namespace quillmar
