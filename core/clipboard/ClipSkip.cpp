#include "core/clipboard/ClipSkip.h"

#include <algorithm>

#include "core/clipboard/ClipboardSettings.h"

namespace quillmar {

std::string_view rawValue(ClipSkip skip)
{
    switch (skip) {
    case ClipSkip::own:
        return "own";
    case ClipSkip::concealed:
        return "concealed";
    case ClipSkip::excluded:
        return "excluded";
    case ClipSkip::paused:
        return "paused";
    case ClipSkip::transient:
        return "transient";
    }
    return "own";
}

std::optional<ClipSkip> skipReason(const PasteboardSnapshot& snapshot, const Settings& settings)
{
    if (snapshot.isOwnWrite)
        return ClipSkip::own;
    if (snapshot.isPrivate)
        return ClipSkip::concealed;
    auto excluded = settings.value(ClipboardSettings::excludedApps);
    bool declaredExcluded = snapshot.declaredSource
        && std::find(excluded.begin(), excluded.end(), *snapshot.declaredSource) != excluded.end();
    if (snapshot.isExcluded || declaredExcluded)
        return ClipSkip::excluded;
    if (settings.value(ClipboardSettings::paused))
        return ClipSkip::paused;
    if (snapshot.isTransient && settings.value(ClipboardSettings::skipTransient))
        return ClipSkip::transient;
    return std::nullopt;
}

} // namespace quillmar
