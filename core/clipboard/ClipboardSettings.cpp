#include "core/clipboard/ClipboardSettings.h"

#include <algorithm>

namespace quillmar::ClipboardSettings {

void registerDefaults(Settings& settings)
{
    settings.registerDefaults(excludedApps, retentionDays, skipTransient, clearOnSleep, clearOnLock, autoClearSeconds,
        autoClearMinutes, linkPreviews, previewPane, pasteOnSelect, saveImages, cleanLinksAutomatic, limit, paused);
}

std::int64_t historyLimit(const Settings& settings)
{
    return std::max(settings.value(limit), minimumLimit);
}

std::optional<Duration> retention(const Settings& settings)
{
    auto days = settings.value(retentionDays);
    if (!(days > 0.0))
        return std::nullopt;
    return quillmar::seconds(std::min(days, 100000.0) * 86400.0);
}

std::optional<Duration> autoClearDelay(const Settings& settings)
{
    auto inSeconds = settings.value(autoClearSeconds);
    if (inSeconds > 0.0)
        return quillmar::seconds(std::min(inSeconds, 1e7));
    auto inMinutes = settings.value(autoClearMinutes);
    if (inMinutes > 0.0)
        return quillmar::seconds(std::min(inMinutes, 1e5) * 60.0);
    return std::nullopt;
}

} // namespace quillmar::ClipboardSettings
