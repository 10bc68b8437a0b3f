#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace quillmar::testing_support {

using PlistStrings = std::vector<std::pair<std::string, std::string>>;

// A hand-written XML property list: one dictionary of string values, in the given order.
inline std::string xmlInfoPlist(const PlistStrings& strings)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n";
    for (const auto& [key, value] : strings)
        text += "\t<key>" + key + "</key>\n\t<string>" + value + "</string>\n";
    return text + "</dict>\n</plist>\n";
}

// Writes `contents` to `path`, creating the folders above it.
inline void writeFixtureFile(const std::filesystem::path& path, const std::string& contents)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

// An application bundle at `bundle` with `contents` as its "Contents/Info.plist".
inline void makeBundle(const std::filesystem::path& bundle, const std::string& contents)
{
    writeFixtureFile(bundle / "Contents" / "Info.plist", contents);
}

} // namespace quillmar::testing_support
