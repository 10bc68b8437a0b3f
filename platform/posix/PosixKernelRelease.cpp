#include "platform/posix/PosixKernelRelease.h"

#include <sys/utsname.h>

namespace quillmar {

std::optional<std::string> PosixKernelRelease::release() const
{
    utsname names {};
    if (uname(&names) != 0 || names.release[0] == '\0')
        return std::nullopt;
    return std::string(names.release);
}

} // namespace quillmar
