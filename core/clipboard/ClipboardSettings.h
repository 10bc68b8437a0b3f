#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

#include "core/runtime/Clock.h"
#include "core/settings/Settings.h"

namespace quillmar {

// The clipboard's settings keys, their defaults, and the rules that read them.
namespace ClipboardSettings {

inline constexpr std::string_view excludedApps = "clipboard.excludedApps";
inline constexpr std::string_view retentionDays = "files.clipboard.retentionDays";
inline constexpr std::string_view skipTransient = "files.clipboard.skipTransient";
inline constexpr std::string_view clearOnSleep = "files.clipboard.clearOnSleep";
inline constexpr std::string_view clearOnLock = "files.clipboard.clearOnLock";
inline constexpr std::string_view autoClearSeconds = "files.clipboard.autoClearSeconds";
inline constexpr std::string_view autoClearMinutes = "clipboard.autoClearMinutes";
inline constexpr std::string_view linkPreviews = "files.clipboard.linkPreviews";
inline constexpr std::string_view previewPane = "files.clipboard.previewPane";
inline constexpr std::string_view pasteOnSelect = "clipboard.pasteOnSelect";
inline constexpr std::string_view saveImages = "clipboard.saveImages";
inline constexpr std::string_view cleanLinksAutomatic = "cleanLinks.automatic";
inline constexpr std::string_view limit = "clipboardLimit";
// "Pause recording": while on, nothing copied is recorded. Kept across restarts.
inline constexpr std::string_view paused = "clipboard.paused";

// Defaults: 200 items; 30 days; automatic clearing off (0 in both delay keys) and not on sleep or lock;
// transient copies skipped; images saved; links cleaned when the feature is on; paste on select.
inline constexpr std::int64_t defaultLimit = 200;
inline constexpr std::int64_t minimumLimit = 10;
inline constexpr std::int64_t defaultRetentionDays = 30;

nlohmann::json defaults();

// max(`clipboardLimit`, 10): a smaller limit is raised on purpose, so that a slip of the finger never
// empties the history.
std::int64_t historyLimit(const Settings& settings);

// How long unpinned items are kept; none (kept until trimmed) for 0 or fewer days.
std::optional<Duration> retention(const Settings& settings);

// How long after the last copy the system clipboard is emptied; none when off. Seconds win over minutes
// when both are set above 0.
std::optional<Duration> autoClearDelay(const Settings& settings);

bool isOn(const Settings& settings, std::string_view key);

} // namespace ClipboardSettings

} // namespace quillmar
