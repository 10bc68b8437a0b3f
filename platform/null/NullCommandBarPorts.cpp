#include "platform/null/NullCommandBarPorts.h"

namespace quillmar {

Result<void> NullRandomSource::fill(std::span<std::uint8_t>)
{
    return Error { "random.unsupported", "Secure random numbers are not supported on this system.", "RandomSource" };
}

} // namespace quillmar
