#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/desktop/PixelSize.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// What a history entry holds. Raw values are stored in "history.json".
enum class ClipKind { text, link, image, files };

std::string_view rawValue(ClipKind kind);
std::optional<ClipKind> clipKindFromRawValue(std::string_view raw);

// The filter chips of the picker.
enum class ClipCategory { all, links, images, files, colors };

std::string_view rawValue(ClipCategory category);
std::optional<ClipCategory> clipCategoryFromRawValue(std::string_view raw);

// One clipboard history entry, serialised under these key names. `date` is the latest copy, kept to the
// millisecond so that it survives the file unchanged (the file holds Unix epoch seconds).
struct ClipItem {
    std::string id;
    ClipKind kind = ClipKind::text;
    std::optional<std::string> text;
    std::optional<std::vector<std::string>> filePaths;
    std::optional<std::string> imageFile; // a plain file name inside the history folder
    std::optional<PixelSize> imageSize;
    WallTime date;
    bool isPinned = false;
    std::optional<std::string> sourceBundleID;
    std::optional<std::string> sourceName;
    std::optional<std::int64_t> imageBytes;
    std::optional<std::string> imageHash;

    bool operator==(const ClipItem&) const = default;

    nlohmann::json toJson() const;

    // Outside data: never throws. None when a required field (id, kind, date) is missing or of the wrong
    // type, or when `imageFile` is anything but a plain file name (the store deletes image files by that
    // name, so a path must never reach it). Optional fields of the wrong type are left out.
    static std::optional<ClipItem> fromJson(const nlohmann::json& json);
};

// The largest distance from 1970, in seconds, that a date read from outside may have: the clock holds about
// 292 years of nanoseconds either way.
inline constexpr double maximumEpochSeconds = 9e9;

// `time` cut to whole milliseconds: the precision of a history date.
WallTime historyDate(WallTime time);

// True for a name that stays inside its folder: not empty, no separator, not "." or "..".
bool isPlainFileName(std::string_view name);

} // namespace quillmar
