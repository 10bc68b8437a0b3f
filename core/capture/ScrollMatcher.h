#pragma once

#include <optional>
#include <span>

#include "core/capture/RowSignature.h"

namespace quillmar {

// How well a shift lines up two frames: rows of the current frame that could be compared (not flagged),
// and those of them whose counterpart in the previous frame has the same hash and is not flagged.
struct MatchScore {
    int compared = 0;
    int matched = 0;

    bool operator==(const MatchScore&) const = default;
};

// The matcher's answer for a pair of frames.
struct ScrollMatch {
    enum class Outcome {
        accepted, // `shift` places the current frame
        unusable, // no shift could be judged: too few rows can be compared; nothing is known to be lost
        lost, // enough rows were compared at some shift, but none lines up: the page went by too fast
    };

    Outcome outcome = Outcome::unusable;
    int shift = 0;
    MatchScore score;

    bool operator==(const ScrollMatch&) const = default;
};

// Finds how many rows the page has scrolled between two frames of row signatures. A shift s means that
// row i of the current frame shows what row i + s of the previous frame showed (the page moved up).
class ScrollMatcher final {
public:
    // A shift is accepted only with at least this many compared and matched rows, and with more than
    // half of its compared rows matched: one agreeing row is a coincidence, and a candidate where most
    // rows disagree (only a sticky header and footer line up, say) is no placement.
    static constexpr int minimumCompared = 8;
    static constexpr int minimumMatched = 8;

    // Rows of the current frame at index i < min(current rows, previous rows − shift) are compared with
    // previous row i + shift; flagged current rows are skipped. A negative shift or no overlap is (0, 0).
    static MatchScore score(std::span<const RowSignature> previous, std::span<const RowSignature> current, int shift);

    // The rows at the bottom of a frame that no shift may leave as its only overlap: a tenth of the rows
    // when there are more than 119, else 12.
    static int margin(int rows);

    // Tries `hint` first when it is a candidate, then every shift from 0 to (rows − margin) of the
    // shorter frame. The acceptable candidate with the most matched rows wins; on a tie, the one tried
    // first. Candidates that can no longer win are abandoned early.
    static ScrollMatch match(std::span<const RowSignature> previous, std::span<const RowSignature> current,
        std::optional<int> hint);

    // The rows at the bottom that did not move (a fixed footer): counted from the bottom up while hash
    // and flag are equal in both frames, at most a third of the shorter frame; 0 below 3 rows.
    static int staticBottomRows(std::span<const RowSignature> previous, std::span<const RowSignature> current);

    static bool acceptable(MatchScore score);
};

} // namespace quillmar
