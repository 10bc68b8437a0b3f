#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/commandbar/CommandIcon.h"
#include "core/commandbar/CommandPayload.h"
#include "core/commandbar/CommandSource.h"
#include "core/hotkeys/Shortcut.h"
#include "core/runtime/Clock.h"

namespace quillmar {

// One searchable thing, as a source offers it.
struct CommandCandidate {
    std::string id {}; // unique across all sources: the learning key and the dedupe key
    CommandSource source = CommandSource::apps;
    std::string title {}; // matched and shown (UTF-8)
    std::string subtitle {}; // shown only
    std::vector<std::string> keywords {}; // further names, matched at a discount and never highlighted
    CommandIcon icon {};
    CommandPayload payload {};
    std::string kind {}; // a finer classification within the source; ranking ignores it
    std::optional<Shortcut> shortcut {}; // shown as a key cap
    double boost = 0; // added to the ranked score as it stands; each source sets its own
    bool isActive = false; // shown in the row (a running application); ranking ignores it
    std::optional<WallTime> date {}; // drives the recency bonus (a file's last use)
    bool learns = true; // false: no frecency and no habit bonus

    bool operator==(const CommandCandidate&) const = default;
};

// The candidates of one query run, shared and never changed once made. The ranker prepares a list once
// (folding and cutting every title into characters) and reuses that work for as long as it is handed
// the same list, so a source should make a new list only when its items change.
using CommandCandidateList = std::shared_ptr<const std::vector<CommandCandidate>>;

inline CommandCandidateList makeCandidateList(std::vector<CommandCandidate> candidates)
{
    return std::make_shared<const std::vector<CommandCandidate>>(std::move(candidates));
}

} // namespace quillmar
