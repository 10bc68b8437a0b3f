#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/apps/ElectronFeed.h"
#include "core/net/Url.h"

namespace quillmar {

// One installed application and its update sources. Its identity in lists is its location (`url`).
struct InstalledBundle {
    std::filesystem::path url;        // the ".app" bundle as the scan found it
    std::string name;                 // never empty
    std::string bundleID;             // never empty
    std::string shortVersion;         // may be empty
    std::string build;                // may be empty
    std::optional<Url> feedURL;       // the declared appcast, only when the fetch policy allows it
    bool hasInsecureFeed = false;     // a feed is declared but the fetch policy refuses its address
    bool isAppStore = false;
    bool isWrappediOSApp = false;     // an iPhone/iPad application wrapped for the Mac
    std::optional<ElectronFeed::Config> electron;

    bool operator==(const InstalledBundle&) const = default;
};

} // namespace quillmar
