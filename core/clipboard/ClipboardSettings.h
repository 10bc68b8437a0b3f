#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime/Clock.h"
#include "core/settings/Settings.h"

namespace quillmar {

// The clipboard's settings keys, their defaults, and the rules that read them.
namespace ClipboardSettings {

using StringList = std::vector<std::string>;

inline constexpr SettingKey<StringList> excludedApps { "clipboard.excludedApps", {} };
// Days; 0 or fewer keep unpinned items until they are trimmed.
inline constexpr SettingKey<double> retentionDays { "files.clipboard.retentionDays", 30 };
inline constexpr SettingKey<bool> skipTransient { "files.clipboard.skipTransient", true };
inline constexpr SettingKey<bool> clearOnSleep { "files.clipboard.clearOnSleep", false };
inline constexpr SettingKey<bool> clearOnLock { "files.clipboard.clearOnLock", false };
// Automatic clearing is off while both delays are 0.
inline constexpr SettingKey<double> autoClearSeconds { "files.clipboard.autoClearSeconds", 0 };
inline constexpr SettingKey<double> autoClearMinutes { "clipboard.autoClearMinutes", 0 };
inline constexpr SettingKey<bool> linkPreviews { "files.clipboard.linkPreviews", false };
inline constexpr SettingKey<bool> previewPane { "files.clipboard.previewPane", true };
inline constexpr SettingKey<bool> pasteOnSelect { "clipboard.pasteOnSelect", true };
inline constexpr SettingKey<bool> saveImages { "clipboard.saveImages", true };
// Links are cleaned as they are copied only while the feature is on too.
inline constexpr SettingKey<bool> cleanLinksAutomatic { "cleanLinks.automatic", true };
inline constexpr SettingKey<std::int64_t> limit { "clipboardLimit", 200 };
// "Pause recording": while on, nothing copied is recorded. Kept across restarts.
inline constexpr SettingKey<bool> paused { "clipboard.paused", false };

inline constexpr std::int64_t minimumLimit = 10;

// Registers the defaults of every key above.
void registerDefaults(Settings& settings);

// max(`clipboardLimit`, 10): a smaller limit is raised on purpose, so that a slip of the finger never
// empties the history.
std::int64_t historyLimit(const Settings& settings);

// How long unpinned items are kept; none (kept until trimmed) for 0 or fewer days.
std::optional<Duration> retention(const Settings& settings);

// How long after the last copy the system clipboard is emptied; none when off. Seconds win over minutes
// when both are set above 0.
std::optional<Duration> autoClearDelay(const Settings& settings);

} // namespace ClipboardSettings

} // namespace quillmar
