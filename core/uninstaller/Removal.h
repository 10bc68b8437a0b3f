#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "core/uninstaller/Recycler.h"
#include "core/uninstaller/RemovalItem.h"
#include "core/uninstaller/RemovalOutcome.h"

namespace quillmar {

// Moves an application and its chosen leftovers to the Trash, every path checked by the trash guard
// first. Runs on the calling thread (the uninstaller calls it on its background queue).
class Removal final {
public:
    // Paths handed to the recycler at once: small enough for progress to move and a cancel to be felt
    // soon, large enough that the per-call cost of the system's trash operation stays small.
    static constexpr std::size_t defaultBatchSize = 8;

    // Items that `TrashGuard::isSafeToTrash(url, home)` refuses, and an application that AppRefusal
    // refuses, are skipped; both are asked once up front and again right before each batch, so a link
    // planted meanwhile is still caught. The rest go through `recycler` in batches of `batchSize`:
    // after each batch `progress` (may be empty) gets the fraction handled, 0...1, and before each batch
    // after the first `isCancelled` (may be empty) may stop the run. An item naming a location already
    // named is `repeated` and handled once. Leftovers go first and the application last, so a cancelled
    // run leaves it in place. Every item lands in exactly one list of the outcome.
    static RemovalOutcome run(std::vector<RemovalItem> items, const std::filesystem::path& home, Recycler& recycler,
        std::size_t batchSize = defaultBatchSize, const Recycler::Progress& progress = {},
        const Recycler::CancelCheck& isCancelled = {});
};

} // namespace quillmar
