#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace quillmar {

// One `item` of an appcast, as the feed gives it: every field optional, URLs kept as the validated text
// of an absolute URL (see AbsoluteUrl).
struct AppcastItem {
    std::optional<std::string> title = std::nullopt;
    std::optional<std::string> version = std::nullopt; // the machine version (the build the application reports)
    std::optional<std::string> shortVersion = std::nullopt; // the marketing version
    std::optional<std::string> minimumSystemVersion = std::nullopt;
    std::optional<std::string> maximumSystemVersion = std::nullopt;
    std::optional<std::string> minimumUpdateVersion = std::nullopt; // the oldest installed build that may update to it
    std::optional<std::string> channel = std::nullopt; // empty or absent for the release channel
    std::optional<std::string> hardwareRequirements = std::nullopt; // architectures, separated by commas or spaces
    std::optional<std::string> os = std::nullopt;
    std::optional<std::string> downloadURL = std::nullopt; // from the enclosure
    std::optional<std::string> link = std::nullopt; // the item's web page
    std::optional<std::string> releaseNotesURL = std::nullopt;
    std::optional<std::string> notesHTML = std::nullopt; // the item's description
    std::optional<std::chrono::sys_seconds> date = std::nullopt; // publication time, UTC

    // The item names a download distinct from its web page: `downloadURL` and `link` differ, two absent
    // values counting as equal and an absent one differing from a present one.
    bool hasDownload() const { return downloadURL != link; }

    // Every field absent.
    bool isBlank() const;

    friend bool operator==(const AppcastItem&, const AppcastItem&) = default;
};

} // namespace quillmar
