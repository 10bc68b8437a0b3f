#include "platform/unsupported/UnsupportedFanHelperFiles.h"

namespace quillmar {

namespace {

Error unsupported(const std::filesystem::path& path)
{
    return Error { "fans.helperUnsupported", "The fan helper can't run on this system.", path.string() };
}

} // namespace

Result<std::unique_ptr<FanHelperLockFile>> UnsupportedFanHelperFiles::openLockFile(const std::filesystem::path& path, std::uint32_t)
{
    return unsupported(path);
}

bool UnsupportedFanHelperFiles::exists(const std::filesystem::path&)
{
    return false;
}

Result<void> UnsupportedFanHelperFiles::writeMarker(const std::filesystem::path& path)
{
    return unsupported(path);
}

Result<void> UnsupportedFanHelperFiles::removeMarker(const std::filesystem::path&)
{
    // There is never a marker to remove.
    return {};
}

} // namespace quillmar
