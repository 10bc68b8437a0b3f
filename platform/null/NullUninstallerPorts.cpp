#include "platform/null/NullUninstallerPorts.h"

namespace quillmar {

SigningDetails NullSigningInfo::details(const std::filesystem::path&)
{
    return {};
}

std::optional<FileUsage> NullDiskUsage::examine(const std::filesystem::path&) const
{
    return std::nullopt;
}

std::vector<RecycleFailure> NullRecycler::recycleBatch(std::span<const std::filesystem::path> paths)
{
    std::vector<RecycleFailure> failures;
    for (const auto& path : paths)
        failures.push_back({ path, RecycleFailure::Reason::other, "moving to the trash is not supported on this system" });
    return failures;
}

} // namespace quillmar
