#include "core/uninstaller/InstalledAppList.h"

#include "core/apps/AppInventory.h"

namespace quillmar::InstalledAppList {

namespace {

InstalledApp fromBundle(InstalledBundle bundle)
{
    InstalledApp app;
    app.url = std::move(bundle.url);
    app.name = std::move(bundle.name);
    app.bundleID = std::move(bundle.bundleID);
    // The inventory already puts the build in place of a missing marketing version.
    app.version = std::move(bundle.shortVersion);
    return app;
}

} // namespace

std::vector<std::filesystem::path> defaultRoots(const std::filesystem::path& home)
{
    return AppInventory::defaultRoots(home);
}

std::vector<InstalledApp> scan(const std::vector<std::filesystem::path>& roots)
{
    std::vector<InstalledApp> apps;
    for (auto& bundle : AppInventory(roots).scan())
        apps.push_back(fromBundle(std::move(bundle)));
    return apps;
}

std::optional<InstalledApp> read(const std::filesystem::path& bundle)
{
    auto found = AppInventory({}).read(bundle);
    if (!found)
        return std::nullopt;
    return fromBundle(std::move(*found));
}

} // namespace quillmar::InstalledAppList
