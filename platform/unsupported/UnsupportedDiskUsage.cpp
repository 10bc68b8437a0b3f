#include "platform/unsupported/UnsupportedDiskUsage.h"

namespace quillmar {

std::optional<FileUsage> UnsupportedDiskUsage::examine(const std::filesystem::path&) const
{
    return std::nullopt;
}

} // namespace quillmar
