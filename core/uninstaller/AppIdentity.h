#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/uninstaller/SigningInfo.h"

namespace quillmar {

// What the leftover search matches Library entries against, built from one application.
struct AppIdentity {
    // How deep below the bundle folder nested bundles are looked for. Helpers, services and extensions
    // sit two or three levels down ("Contents/XPCServices/X.xpc"); those shipped inside a framework sit
    // at seven ("Contents/Frameworks/F.framework/Versions/A/XPCServices/X.xpc"); one more level leaves
    // room for a helper's own helpers without walking a large bundle's resources without end.
    static constexpr int embeddedSearchDepth = 8;
    // At most this many entries of one bundle are looked at, whatever its shape.
    static constexpr int embeddedSearchBudget = 100000;

    std::string bundleID;
    // Identifiers of the ".app", ".xpc" and ".appex" bundles inside the application, in the order found,
    // without repeats, without the bundle's own identifier and without protected ones.
    std::vector<std::string> embeddedBundleIDs;
    // The protected identifiers found inside (shared frameworks' helpers such as "io.sentry.Sentry"):
    // nothing that answers to them, even by name, is offered.
    std::vector<std::string> protectedEmbeddedIDs;
    std::optional<std::string> teamIdentifier;
    std::vector<std::string> applicationGroups;
    // The words of the bundle's file name (without ".app") and of the identifier's last component, each
    // list as NameTokens::split gives it; empty lists are left out. An entry matches by name when its own
    // words are exactly one of these lists.
    std::vector<std::vector<std::string>> nameSequences;

    // The bundle identifier, then the embedded ones: everything `classify` is asked about.
    std::vector<std::string_view> identifiers() const;

    // All name words, those of the file name first, without repeats.
    std::vector<std::string> nameTokens() const;

    // Builds the identity of the application at `bundle` whose identifier is `bundleID`. Unreadable
    // parts of the bundle are skipped. `isCancelled` (may be empty) ends the nested search early.
    static AppIdentity make(const std::filesystem::path& bundle, std::string bundleID, SigningInfo& signing,
        const std::function<bool()>& isCancelled = {});

    // The identifiers of bundles nested in `bundle` ("app", "xpc", "appex"), in the order found, without
    // repeats; protected ones included. Links are not followed.
    static std::vector<std::string> nestedBundleIDs(const std::filesystem::path& bundle,
        const std::function<bool()>& isCancelled = {});
};

} // namespace quillmar
