#pragma once

#include <optional>
#include <string_view>

#include "core/clipboard/PasteboardSnapshot.h"
#include "core/settings/Settings.h"

namespace quillmar {

// Why the history leaves a copy out, whatever it holds.
enum class ClipSkip {
    own, // written by this application
    concealed, // the concealed type, or the password manager as declared source
    excluded, // from an application in "clipboard.excludedApps"
    paused, // recording is paused
    transient, // transient, auto-generated or generated, with "files.clipboard.skipTransient" on
};

// "own", "concealed", "excluded", "paused", "transient".
std::string_view rawValue(ClipSkip skip);

// The first reason, in this order, to leave out the copy `snapshot` describes; none when it is recorded (if it
// holds anything recordable). The history's own decision, which also ignores the next copy on request.
std::optional<ClipSkip> skipReason(const PasteboardSnapshot& snapshot, const Settings& settings);

} // namespace quillmar
