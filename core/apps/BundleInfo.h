#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/apps/PropertyValue.h"

namespace quillmar {

// The information property list of an application bundle.
struct BundleInfo {
    std::filesystem::path bundle;     // the bundle as given
    std::filesystem::path infoPlist;  // the property list that was read
    bool isWrapped = false;           // an iPhone/iPad application wrapped for the Mac ("Wrapper/<name>.app")
    PropertyValue::Dictionary properties; // never empty

    // The value of `key` when it is a string, else none.
    std::optional<std::string> string(std::string_view key) const;
    // The value of `key` as a list of strings: a string alone, or the string entries of an array (other
    // entries skipped); empty when missing or of another kind.
    std::vector<std::string> strings(std::string_view key) const;
    // The value of `key` of any kind, or null.
    const PropertyValue* value(std::string_view key) const;
};

// Reads "Contents/Info.plist" of `bundle`; when that does not exist, the "Info.plist" directly inside the
// first ".app" entry of its "Wrapper" folder (entries taken in name order), and the result is wrapped.
// The file is read whole and must hold a non-empty dictionary. None when nothing usable is found.
std::optional<BundleInfo> readBundleInfo(const std::filesystem::path& bundle);

} // namespace quillmar
