#include "core/clipboard/ClipboardSettings.h"

#include <algorithm>
#include <string>

namespace quillmar::ClipboardSettings {

nlohmann::json defaults()
{
    return {
        { std::string(excludedApps), nlohmann::json::array() },
        { std::string(retentionDays), defaultRetentionDays },
        { std::string(skipTransient), true },
        { std::string(clearOnSleep), false },
        { std::string(clearOnLock), false },
        { std::string(autoClearSeconds), 0 },
        { std::string(autoClearMinutes), 0 },
        { std::string(linkPreviews), false },
        { std::string(previewPane), true },
        { std::string(pasteOnSelect), true },
        { std::string(saveImages), true },
        { std::string(cleanLinksAutomatic), true },
        { std::string(limit), defaultLimit },
        { std::string(paused), false },
    };
}

std::int64_t historyLimit(const Settings& settings)
{
    return std::max(settings.integer(limit).value_or(defaultLimit), minimumLimit);
}

std::optional<Duration> retention(const Settings& settings)
{
    auto days = settings.number(retentionDays).value_or(static_cast<double>(defaultRetentionDays));
    if (!(days > 0.0))
        return std::nullopt;
    return quillmar::seconds(std::min(days, 100000.0) * 86400.0);
}

std::optional<Duration> autoClearDelay(const Settings& settings)
{
    auto inSeconds = settings.number(autoClearSeconds).value_or(0.0);
    if (inSeconds > 0.0)
        return quillmar::seconds(std::min(inSeconds, 1e7));
    auto inMinutes = settings.number(autoClearMinutes).value_or(0.0);
    if (inMinutes > 0.0)
        return quillmar::seconds(std::min(inMinutes, 1e5) * 60.0);
    return std::nullopt;
}

bool isOn(const Settings& settings, std::string_view key)
{
    return settings.boolValue(key).value_or(false);
}

} // namespace quillmar::ClipboardSettings
