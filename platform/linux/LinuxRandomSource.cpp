#include "platform/linux/LinuxRandomSource.h"

#include <cerrno>
#include <cstring>

#include <sys/random.h>

#include <fmt/format.h>

namespace quillmar {

Result<void> LinuxRandomSource::fill(std::span<std::uint8_t> bytes)
{
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        // Requests above 256 bytes may come back short, and a signal may interrupt the wait for seeding.
        ssize_t count = getrandom(bytes.data() + filled, bytes.size() - filled, 0);
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return Error { "random.unavailable", "The system could not provide random numbers.",
                fmt::format("getrandom: {}", std::strerror(errno)) };
        }
        filled += static_cast<std::size_t>(count);
    }
    return {};
}

} // namespace quillmar
