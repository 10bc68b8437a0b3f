#pragma once

#include <optional>
#include <string_view>

namespace quillmar {

// How well one file name in the Library belongs to one identifier, weakest first so that the best of
// several classes is their maximum.
enum class MatchClass : int {
    none = 0,
    related = 1, // a relative of the identifier ("com.example.App.helper"): offered, not ticked
    exact = 2, // the identifier's own file ("com.example.App.plist"): offered and ticked
};

// "none", "related", "exact".
std::string_view matchClassName(MatchClass match);

// The class of the entry name `entry` (one file or folder name, not a path) against `identifier`:
//   exact   — the identifier itself; the identifier + ".plist", ".savedstate", ".binarycookies",
//             ".lockfile" or ".log"; the identifier + "." + a 36-character UUID (exactly four "-") +
//             ".plist" (a per-machine preference file); or a 10-character first component + "." + the
//             identifier (a team-prefixed group container, "TEAMID.identifier");
//   related — the identifier + "." + anything else;
//   none    — everything else, including a longer word that merely starts with the identifier
//             ("com.example.Apple" for "com.example.App").
// The comparison is by bytes, case-sensitive. An empty identifier matches nothing.
MatchClass classify(std::string_view entry, std::string_view identifier);

} // namespace quillmar
