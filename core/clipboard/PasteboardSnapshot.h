#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/desktop/Pasteboard.h"
#include "core/desktop/PasteboardTypes.h"

namespace quillmar {

// What one read of the pasteboard means for the history.
struct PasteboardSnapshot {
    std::int64_t changeCount = 0;
    std::optional<std::string> text;
    std::vector<std::string> filePaths;
    std::optional<PasteboardImage> image;
    bool preferImage = false;   // the image is the primary representation (listed before any text)
    bool isPrivate = false;     // concealed, or declared by the password manager
    bool isExcluded = false;    // the source application is in "clipboard.excludedApps" (set by the store)
    bool isRemote = false;      // copied on another device
    bool isTextOnly = false;    // text and nothing else
    bool isTransient = false;   // one of the transient, auto-generated or generator markers
    bool isOwnWrite = false;    // written by this application
    std::optional<std::string> declaredSource;

    // Reads the flags and contents out of `reading`; `transientMarkers` are the types treated as
    // transient (PasteboardTypes::transient unless configured otherwise).
    static PasteboardSnapshot from(const PasteboardReading& reading, const std::vector<std::string>& transientMarkers);
};

// The default transient markers as a list.
std::vector<std::string> defaultTransientMarkers();

} // namespace quillmar
