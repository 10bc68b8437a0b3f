#include "core/apps/SystemAppsPorts.h"
#include "platform/posix/PosixKernelRelease.h"

namespace quillmar {

SystemAppsPorts makeSystemAppsPorts()
{
    return { std::make_unique<PosixKernelRelease>() };
}

} // namespace quillmar
