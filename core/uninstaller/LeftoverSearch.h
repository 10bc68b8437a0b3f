#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "core/uninstaller/AppIdentity.h"
#include "core/uninstaller/Leftover.h"
#include "core/uninstaller/LeftoverLocation.h"
#include "core/uninstaller/MatchClass.h"

namespace quillmar {

// Finds what an application left in a Library folder. Pure rules over entry names, plus the listing of
// each searched folder; runs on whatever thread calls it.
class LeftoverSearch final {
public:
    // How one entry name relates to an application.
    struct Verdict {
        MatchClass match = MatchClass::none;
        bool byName = false;

        bool operator==(const Verdict&) const = default;
    };

    // Called before each folder is searched: its index in LeftoverLocation::all() and its row.
    using Progress = std::function<void(std::size_t index, const LeftoverLocation& location)>;

    // The verdict on the entry `name` found in `location`:
    //  - never offered (none) when the name begins with a protected prefix, when the identifier it
    //    matches best is protected, or when it is named after a protected embedded component;
    //  - otherwise the best class over the bundle identifier and the embedded ones (exact over related,
    //    the first identifier on a tie);
    //  - in "Group Containers", a name equal to a declared application group is exact, and one that
    //    begins with the signing team + "." is related (the team's apps share it);
    //  - in the folders searched by name, a name not matched by identifier whose words are exactly one of
    //    the application's name word lists is related, by name. Sharing a single word with a longer name
    //    is never enough: "Code" is not offered for "Visual Studio Code".
    static Verdict judge(std::string_view name, const LeftoverLocation& location, const AppIdentity& identity);

    // Every entry directly inside the sixteen folders under `library` that `judge` accepts, in the order of
    // the folders and then of the names; exact ones start ticked, related ones unticked; sizes are 0 (they
    // are measured afterwards). Unreadable or missing folders are skipped. `isCancelled` (may be empty) is
    // asked between folders; a cancelled search returns what it found so far.
    static std::vector<Leftover> find(const AppIdentity& identity, const std::filesystem::path& library,
        const Progress& progress = {}, const std::function<bool()>& isCancelled = {});
};

} // namespace quillmar
