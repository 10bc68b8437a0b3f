#include "core/apps/BundleInfo.h"

#include <algorithm>
#include <system_error>

#include "core/apps/PropertyList.h"
#include "core/base/Files.h"

namespace quillmar {

namespace {

// The first entry of the "Wrapper" folder whose extension is exactly "app", by name.
std::optional<std::filesystem::path> wrappedBundle(const std::filesystem::path& bundle)
{
    std::error_code error;
    std::filesystem::directory_iterator entries(bundle / "Wrapper", error);
    if (error)
        return std::nullopt;
    std::optional<std::filesystem::path> first;
    for (const auto& entry : entries) {
        const auto& path = entry.path();
        if (path.extension() == ".app" && (!first || path.filename() < first->filename()))
            first = path;
    }
    return first;
}

} // namespace

std::optional<std::string> BundleInfo::string(std::string_view key) const
{
    const auto* found = value(key);
    if (!found || !found->string())
        return std::nullopt;
    return *found->string();
}

std::vector<std::string> BundleInfo::strings(std::string_view key) const
{
    std::vector<std::string> result;
    const auto* found = value(key);
    if (!found)
        return result;
    if (const auto* text = found->string()) {
        result.push_back(*text);
    } else if (const auto* array = found->array()) {
        for (const auto& item : *array) {
            if (const auto* entry = item.string())
                result.push_back(*entry);
        }
    }
    return result;
}

const PropertyValue* BundleInfo::value(std::string_view key) const
{
    auto found = properties.find(key);
    return found == properties.end() ? nullptr : &found->second;
}

std::optional<BundleInfo> readBundleInfo(const std::filesystem::path& bundle)
{
    BundleInfo info;
    info.bundle = bundle;
    info.infoPlist = bundle / "Contents" / "Info.plist";
    std::error_code error;
    if (!std::filesystem::exists(info.infoPlist, error)) {
        auto inner = wrappedBundle(bundle);
        if (!inner)
            return std::nullopt;
        info.infoPlist = *inner / "Info.plist";
        info.isWrapped = true;
    }
    // Refuse a file far larger than any property list before reading it into memory.
    auto size = std::filesystem::file_size(info.infoPlist, error);
    if (error || size > PropertyListLimits {}.maximumBytes)
        return std::nullopt;
    auto bytes = readFile(info.infoPlist);
    if (!bytes.ok() || !bytes->has_value())
        return std::nullopt;
    auto root = parsePropertyList(**bytes);
    if (!root || !root->dictionary() || root->dictionary()->empty())
        return std::nullopt;
    info.properties = *root->dictionary();
    return info;
}

} // namespace quillmar
