#pragma once

#include "core/uninstaller/Recycler.h"

namespace quillmar {

// The Trash of the freedesktop.org desktop, through GIO's g_file_trash: a path on the home folder's
// file system goes to "$XDG_DATA_HOME/Trash" (files/ plus an info/<name>.trashinfo with the original
// path and the date), one elsewhere to that file system's own ".Trash-<uid>" folder. A link is moved
// itself, never what it points to. Safe to call from any thread; GIO reads HOME and XDG_DATA_HOME once,
// at its first use in the process.
class GioRecycler final : public Recycler {
protected:
    std::vector<RecycleFailure> recycleBatch(std::span<const std::filesystem::path> paths) override;
};

} // namespace quillmar
