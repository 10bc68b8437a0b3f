#pragma once

#include "core/uninstaller/Recycler.h"

namespace quillmar {

// A Trash on a system without one the core can reach: every path stays where it is and is reported
// as failed.
class UnsupportedRecycler final : public Recycler {
protected:
    std::vector<RecycleFailure> recycleBatch(std::span<const std::filesystem::path> paths) override;
};

} // namespace quillmar
