#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "core/apps/ElectronFeed.h"
#include "core/apps/InstalledBundle.h"

namespace quillmar {

// The installed applications: the ".app" bundles under a few roots, each read from its property list.
// Runs off the main thread as part of an update check; it never reports errors: an unreadable root,
// folder or bundle is simply left out.
class AppInventory final {
public:
    // "/Applications", then "<home>/Applications".
    static std::vector<std::filesystem::path> defaultRoots(const std::filesystem::path& home);

    explicit AppInventory(std::vector<std::filesystem::path> roots, ElectronFeed::Origins origins = {});

    // Every application under the roots, in root order, each root walked to three levels below it:
    // hidden entries and symbolic links are skipped, and packages are never entered (see isPackage).
    // One entry per standardised path (the first found wins), sorted by name with the user's locale,
    // ignoring case.
    std::vector<InstalledBundle> scan() const;

    // One bundle; none when it has no usable property list, no identifier, or is one of the suite's own
    // applications (an identifier beginning "com.quillmar.", in any case).
    std::optional<InstalledBundle> read(const std::filesystem::path& bundle) const;

    // A folder the scan treats as an opaque document rather than a folder to walk: any name with the
    // extension of a bundle or package kind (".app", ".framework", ".bundle", ".plugin", ...), and any
    // folder holding "Contents/Info.plist", which is what makes a bundle whatever its name.
    static bool isPackage(const std::filesystem::path& folder);

private:
    std::vector<std::filesystem::path> m_roots;
    ElectronFeed::Origins m_origins;
};

} // namespace quillmar
