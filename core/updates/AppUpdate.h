#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/apps/InstalledBundle.h"

namespace quillmar {

// Where an application's newest version was looked up.
enum class UpdateSource {
    appcast,  // the application's own feed ("SUFeedURL")
    electron, // the manifest its "app-update.yml" points to
    appStore, // the store's public lookup
    none,     // it declares nothing that can be checked
};

// The outcome for one application.
enum class UpdateStatus {
    upToDate,
    updateAvailable,
    notCheckable,
};

// Why an application could not be checked.
enum class UpdateProblem {
    insecureFeed, // its feed address is refused by the fetch policy (plain http, a local name, ...)
    noSource,     // no feed, no Electron manifest, not from the store
    refused,      // the fetcher refused the address of a redirect, or the feed declares entities
    unreachable,  // no answer, an error status, or the resource is gone
    malformed,    // the reply could not be read as the source's format
    tooLarge,     // the reply exceeds the cap on its bytes or the reader's limits on nesting or items
    notListed,    // the store has no Mac listing for its identifier
};

// One row of an update check.
struct AppUpdate {
    InstalledBundle app;
    UpdateSource source = UpdateSource::none;
    UpdateStatus status = UpdateStatus::notCheckable;
    std::optional<std::string> available;       // the newer version, when there is an update
    std::optional<std::string> releaseNotesURL; // a page with the release notes
    std::optional<std::string> notes;           // release notes as the source gives them (HTML or text)
    std::optional<std::string> pageURL;         // where the update is described or downloaded
    std::optional<UpdateProblem> problem;       // set exactly when not checkable
    std::string detail;                         // the failure behind a problem, for logs ("http 503")

    // The installed version as people read it: "1.2 (34)", "1.2" when the build repeats it or is empty.
    std::string installedText() const;
};

std::string_view toString(UpdateSource source);
std::string_view toString(UpdateStatus status);
std::string_view toString(UpdateProblem problem);
// The short phrase shown for a problem ("insecure feed", "unreachable", ...).
std::string_view describe(UpdateProblem problem);

} // namespace quillmar
