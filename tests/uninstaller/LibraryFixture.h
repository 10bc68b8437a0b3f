#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/apps/BundleFixture.h"

namespace quillmar::testing_support {

// A folder or file under a fixture root: a trailing "/" makes a folder, anything else a small file.
inline void makeEntries(const std::filesystem::path& root, const std::vector<std::string>& entries)
{
    for (const auto& entry : entries) {
        if (entry.ends_with("/"))
            std::filesystem::create_directories(root / entry.substr(0, entry.size() - 1));
        else
            writeFixtureFile(root / entry, "data of " + entry);
    }
}

// An application bundle with `identifier`, named by its file name, with nested bundles at the given
// paths inside it ("Contents/XPCServices/Renderer.xpc") and their identifiers.
inline std::filesystem::path makeApp(const std::filesystem::path& bundle, const std::string& identifier,
    const std::vector<std::pair<std::string, std::string>>& nested = {})
{
    makeBundle(bundle, xmlInfoPlist({ { "CFBundleIdentifier", identifier }, { "CFBundleShortVersionString", "1.2" } }));
    writeFixtureFile(bundle / "Contents" / "MacOS" / bundle.stem(), "executable");
    for (const auto& [path, nestedIdentifier] : nested)
        makeBundle(bundle / path, xmlInfoPlist({ { "CFBundleIdentifier", nestedIdentifier } }));
    return bundle;
}

} // namespace quillmar::testing_support
