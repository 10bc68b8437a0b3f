#include "platform/unsupported/UnsupportedRecycler.h"

namespace quillmar {

std::vector<RecycleFailure> UnsupportedRecycler::recycleBatch(std::span<const std::filesystem::path> paths)
{
    std::vector<RecycleFailure> failures;
    for (const auto& path : paths)
        failures.push_back({ path, RecycleFailure::Reason::other, "moving to the trash is not supported on this system" });
    return failures;
}

} // namespace quillmar
