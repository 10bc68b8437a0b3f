#include "core/clipboard/ClipItem.h"

#include <cmath>

#include "core/base/RawValueTable.h"

namespace quillmar {

namespace {

constexpr auto kindNames = rawValueTable<ClipKind>({
    { ClipKind::text, "text" },
    { ClipKind::link, "link" },
    { ClipKind::image, "image" },
    { ClipKind::files, "files" },
});

constexpr auto categoryNames = rawValueTable<ClipCategory>({
    { ClipCategory::all, "all" },
    { ClipCategory::links, "links" },
    { ClipCategory::images, "images" },
    { ClipCategory::files, "files" },
    { ClipCategory::colors, "colors" },
});

std::optional<std::string> optionalString(const nlohmann::json& json, const char* key)
{
    auto found = json.find(key);
    if (found == json.end() || !found->is_string())
        return std::nullopt;
    return found->get<std::string>();
}

std::optional<std::int64_t> optionalInteger(const nlohmann::json& json, const char* key)
{
    auto found = json.find(key);
    if (found == json.end() || !found->is_number_integer())
        return std::nullopt;
    if (found->is_number_unsigned() && found->get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX))
        return std::nullopt;
    return found->get<std::int64_t>();
}

std::optional<WallTime> dateFromSeconds(const nlohmann::json& value)
{
    if (!value.is_number())
        return std::nullopt;
    double seconds = value.get<double>();
    // The clock counts nanoseconds in 64 bits, about 292 years either side of 1970; dates beyond 285 years are
    // damage, not history.
    if (!std::isfinite(seconds) || std::fabs(seconds) > maximumEpochSeconds)
        return std::nullopt;
    auto milliseconds = std::chrono::milliseconds(std::llround(seconds * 1000.0));
    return WallTime(std::chrono::duration_cast<WallTime::duration>(milliseconds));
}

} // namespace

std::string_view rawValue(ClipKind kind)
{
    return kindNames.rawValue(kind);
}

std::optional<ClipKind> clipKindFromRawValue(std::string_view raw)
{
    return kindNames.fromRawValue(raw);
}

std::string_view rawValue(ClipCategory category)
{
    return categoryNames.rawValue(category);
}

std::optional<ClipCategory> clipCategoryFromRawValue(std::string_view raw)
{
    return categoryNames.fromRawValue(raw);
}

WallTime historyDate(WallTime time)
{
    return std::chrono::floor<std::chrono::milliseconds>(time);
}

bool isPlainFileName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos
        && name.find('\\') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

nlohmann::json ClipItem::toJson() const
{
    nlohmann::json json = {
        { "id", id },
        { "kind", rawValue(kind) },
        { "date", static_cast<double>(std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch()).count()) / 1000.0 },
        { "isPinned", isPinned },
    };
    if (text)
        json["text"] = *text;
    if (filePaths)
        json["filePaths"] = *filePaths;
    if (imageFile)
        json["imageFile"] = *imageFile;
    if (imageSize)
        json["imageSize"] = { { "width", imageSize->width }, { "height", imageSize->height } };
    if (sourceBundleID)
        json["sourceBundleID"] = *sourceBundleID;
    if (sourceName)
        json["sourceName"] = *sourceName;
    if (imageBytes)
        json["imageBytes"] = *imageBytes;
    if (imageHash)
        json["imageHash"] = *imageHash;
    return json;
}

std::optional<ClipItem> ClipItem::fromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return std::nullopt;
    ClipItem item;
    auto id = optionalString(json, "id");
    auto kindName = optionalString(json, "kind");
    auto date = json.find("date");
    if (!id || id->empty() || !kindName || date == json.end())
        return std::nullopt;
    auto kind = clipKindFromRawValue(*kindName);
    auto when = dateFromSeconds(*date);
    if (!kind || !when)
        return std::nullopt;
    item.id = std::move(*id);
    item.kind = *kind;
    item.date = *when;

    if (auto pinned = json.find("isPinned"); pinned != json.end() && pinned->is_boolean())
        item.isPinned = pinned->get<bool>();
    item.text = optionalString(json, "text");
    if (auto paths = json.find("filePaths"); paths != json.end() && paths->is_array()) {
        std::vector<std::string> filePaths;
        for (const auto& path : *paths) {
            if (path.is_string())
                filePaths.push_back(path.get<std::string>());
        }
        item.filePaths = std::move(filePaths);
    }
    item.imageFile = optionalString(json, "imageFile");
    if (item.imageFile && !isPlainFileName(*item.imageFile))
        return std::nullopt;
    if (auto size = json.find("imageSize"); size != json.end() && size->is_object()) {
        auto width = optionalInteger(*size, "width");
        auto height = optionalInteger(*size, "height");
        if (width && height)
            item.imageSize = PixelSize { *width, *height };
    }
    item.sourceBundleID = optionalString(json, "sourceBundleID");
    item.sourceName = optionalString(json, "sourceName");
    item.imageBytes = optionalInteger(json, "imageBytes");
    item.imageHash = optionalString(json, "imageHash");
    return item;
}

} // namespace quillmar
