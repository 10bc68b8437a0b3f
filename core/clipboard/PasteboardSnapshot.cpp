#include "core/clipboard/PasteboardSnapshot.h"

#include <algorithm>

namespace quillmar {

namespace {

bool hasType(const PasteboardReading& reading, std::string_view type)
{
    return std::find(reading.types.begin(), reading.types.end(), type) != reading.types.end();
}

std::ptrdiff_t position(const PasteboardReading& reading, std::string_view type)
{
    auto found = std::find(reading.types.begin(), reading.types.end(), type);
    return found == reading.types.end() ? -1 : found - reading.types.begin();
}

} // namespace

std::vector<std::string> defaultTransientMarkers()
{
    return { PasteboardTypes::transient.begin(), PasteboardTypes::transient.end() };
}

PasteboardSnapshot PasteboardSnapshot::from(const PasteboardReading& reading, const std::vector<std::string>& transientMarkers)
{
    PasteboardSnapshot snapshot;
    snapshot.changeCount = reading.changeCount;
    snapshot.text = reading.preferredText();
    std::ptrdiff_t firstText = -1;
    for (auto type : PasteboardTypes::text) {
        if (!reading.strings.contains(std::string(type)))
            continue;
        auto at = position(reading, type);
        if (at >= 0 && (firstText < 0 || at < firstText))
            firstText = at;
    }
    snapshot.filePaths = reading.filePaths;
    snapshot.image = reading.image;
    if (reading.image) {
        auto imageAt = position(reading, reading.image->type);
        snapshot.preferImage = !snapshot.text || (imageAt >= 0 && (firstText < 0 || imageAt < firstText));
    }
    if (auto source = reading.strings.find(std::string(PasteboardTypes::declaredSource)); source != reading.strings.end())
        snapshot.declaredSource = source->second;
    snapshot.isPrivate = hasType(reading, PasteboardTypes::concealed)
        || snapshot.declaredSource == std::string(PasteboardTypes::passwordManager);
    snapshot.isRemote = hasType(reading, PasteboardTypes::remote);
    snapshot.isOwnWrite = hasType(reading, PasteboardTypes::own);
    snapshot.isTransient = std::any_of(transientMarkers.begin(), transientMarkers.end(),
        [&](const std::string& marker) { return hasType(reading, marker); });
    snapshot.isTextOnly = snapshot.text && snapshot.filePaths.empty() && !snapshot.image;
    return snapshot;
}

} // namespace quillmar
