#include "core/apps/AppInventory.h"

#include <array>
#include <set>
#include <string_view>
#include <system_error>

#include "core/apps/BundleInfo.h"
#include "core/apps/BundleNameCollation.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/net/SafeFetcher.h"

namespace quillmar {

namespace {

// Levels below a root that are looked at (1 is a direct child).
constexpr int deepestLevel = 3;
// "app-update.yml" is a few lines; anything far larger is not one.
constexpr std::uintmax_t largestUpdateConfig = 256000;

// Extensions of the bundle and package kinds an application folder may hold, compared exactly.
constexpr std::array<std::string_view, 17> packageExtensions { ".app", ".appex", ".bundle", ".component",
    ".framework", ".kext", ".mdimporter", ".mpkg", ".photoslibrary", ".pkg", ".plugin", ".prefPane",
    ".qlgenerator", ".saver", ".wdgt", ".xcodeproj", ".xpc" };

// The path with "." and ".." resolved and no trailing separator, so that one bundle reached by two
// spellings counts once.
std::filesystem::path standardised(const std::filesystem::path& path)
{
    auto normal = path.lexically_normal();
    if (!normal.has_filename() && normal.has_parent_path() && normal != normal.root_path())
        normal = normal.parent_path();
    return normal;
}

bool fileExists(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

std::optional<ElectronFeed::Config> electronConfig(const std::filesystem::path& bundle, const ElectronFeed::Origins& origins)
{
    auto path = bundle / "Contents" / "Resources" / "app-update.yml";
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) || std::filesystem::file_size(path, error) > largestUpdateConfig || error)
        return std::nullopt;
    auto text = readFile(path);
    if (!text.ok() || !text->has_value())
        return std::nullopt;
    return ElectronFeed::config(**text, origins);
}

} // namespace

std::vector<std::filesystem::path> AppInventory::defaultRoots(const std::filesystem::path& home)
{
    return { "/Applications", home / "Applications" };
}

AppInventory::AppInventory(std::vector<std::filesystem::path> roots, ElectronFeed::Origins origins)
    : m_roots(std::move(roots))
    , m_origins(std::move(origins))
{
}

bool AppInventory::isPackage(const std::filesystem::path& folder)
{
    auto extension = folder.extension().string();
    for (auto known : packageExtensions) {
        if (extension == known)
            return true;
    }
    return fileExists(folder / "Contents" / "Info.plist");
}

std::vector<InstalledBundle> AppInventory::scan() const
{
    std::vector<InstalledBundle> bundles;
    std::set<std::filesystem::path> seen;
    for (const auto& root : m_roots) {
        std::error_code error;
        std::filesystem::recursive_directory_iterator entries(root, std::filesystem::directory_options::skip_permission_denied, error);
        // Symbolic links are never followed (the default), so the walk cannot loop.
        for (; !error && entries != std::filesystem::recursive_directory_iterator(); entries.increment(error)) {
            const auto& entry = *entries;
            const auto& path = entry.path();
            std::error_code statusError;
            bool isLink = entry.is_symlink(statusError);
            bool isFolder = !isLink && entry.is_directory(statusError);
            bool isHidden = path.filename().string().starts_with('.');
            if (isLink || isHidden) {
                entries.disable_recursion_pending();
                continue;
            }
            // depth() counts from 0 for a direct child.
            if (isFolder && (entries.depth() + 1 >= deepestLevel || isPackage(path)))
                entries.disable_recursion_pending();
            if (path.extension() != ".app")
                continue;
            if (seen.contains(standardised(path)))
                continue;
            if (auto bundle = read(path)) {
                seen.insert(standardised(path));
                bundles.push_back(std::move(*bundle));
            }
        }
    }
    BundleNameCollation().sort(bundles);
    return bundles;
}

std::optional<InstalledBundle> AppInventory::read(const std::filesystem::path& bundle) const
{
    auto info = readBundleInfo(bundle);
    if (!info)
        return std::nullopt;

    InstalledBundle result;
    result.url = bundle;
    result.bundleID = info->string("CFBundleIdentifier").value_or("");
    if (result.bundleID.empty() || asciiLower(result.bundleID).starts_with("com.quillmar."))
        return std::nullopt;

    for (auto key : { "CFBundleDisplayName", "CFBundleName" }) {
        if (auto name = info->string(key); name && !name->empty()) {
            result.name = *name;
            break;
        }
    }
    if (result.name.empty())
        result.name = bundle.stem().string();
    if (result.name.empty())
        result.name = bundle.filename().string();

    result.build = info->string("CFBundleVersion").value_or("");
    result.shortVersion = info->string("CFBundleShortVersionString").value_or(result.build);

    if (auto declared = info->string("SUFeedURL")) {
        if (auto feed = Url::parse(trimmed(*declared)); feed && !trimmed(*declared).empty()) {
            if (SafeFetcher::isAllowed(*feed))
                result.feedURL = *feed;
            else
                result.hasInsecureFeed = true;
        }
    }

    result.isWrappediOSApp = info->isWrapped;
    result.isAppStore = info->isWrapped || fileExists(bundle / "Contents" / "_MASReceipt" / "receipt");
    result.electron = electronConfig(bundle, m_origins);
    return result;
}

} // namespace quillmar
