#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/uninstaller/RecycleFailure.h"
#include "core/uninstaller/RemovalItem.h"

namespace quillmar {

// What a removal did with each item: every item lands in exactly one list.
struct RemovalOutcome {
    struct Failure {
        RemovalItem item;
        RecycleFailure::Reason reason = RecycleFailure::Reason::other;
        std::string message; // the system's words, for diagnostics

        bool operator==(const Failure&) const = default;
    };

    static constexpr std::string_view movedSuffix = " moved to the Trash";
    static constexpr std::string_view someFailedSentence = "Some files couldn't be moved";
    static constexpr std::string_view oneFailedPrefix = "Couldn't remove ";
    static constexpr std::string_view appPermissionHint = "Allow App Management in Privacy & Security";
    static constexpr std::string_view dataPermissionHint = "Full Disk Access lets Quillmar remove app data";

    std::vector<RemovalItem> moved;
    std::vector<Failure> failed;
    std::vector<RemovalItem> skipped; // refused by the trash guard, never handed to the recycler
    std::vector<RemovalItem> notAttempted; // left when the removal was cancelled
    std::vector<RemovalItem> repeated; // named a location an earlier item named; that one tells its fate
    bool cancelled = false;

    // The count moved + " moved to the Trash" ("3 moved to the Trash").
    std::string resultLine() const;

    // None when nothing failed; "Couldn't remove " + the name when exactly one item failed; otherwise
    // "Some files couldn't be moved".
    std::optional<std::string> failureLine() const;

    // When a failure was a permission error: "Allow App Management in Privacy & Security" if the
    // application itself was refused, else "Full Disk Access lets Quillmar remove app data". None otherwise.
    std::optional<std::string> hint() const;
};

} // namespace quillmar
