#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/net/Url.h"

namespace quillmar {

// Electron update feeds: the "app-update.yml" an Electron application carries (where its updates live)
// and the "latest-mac.yml" manifest published there (what the newest version is).
class ElectronFeed final {
public:
    ElectronFeed() = delete;

    // Where an Electron application publishes its updates.
    struct Config {
        Url manifestURL;                  // the YAML manifest
        std::optional<Url> releasesPage;  // a human-readable releases page, when the provider has one
        bool operator==(const Config&) const = default;
    };

    // The parts of a manifest that are used.
    struct Manifest {
        std::string version;
        // A kernel release ("20.0.0"), not a marketing version of the system.
        std::optional<std::string> minimumSystemVersion;
        std::optional<std::string> releaseDate;
        bool operator==(const Manifest&) const = default;
    };

    // Configuration values: the web origin of the "github" provider.
    struct Origins {
        std::string github = "https://github.com";
    };

    // The top-level scalars of the text (see flatYamlScalars).
    static std::map<std::string, std::string, std::less<>> scalars(std::string_view text);

    // From the text of "app-update.yml". Provider "github": "owner" and "repo" must be safe names and the
    // repository must not be "private: true". Provider "generic": "url" must pass the fetch policy, and the
    // manifest is "<channel>-mac.yml" inside that folder ("channel" defaults to "latest" and must be a safe
    // name). Anything else: none.
    static std::optional<Config> config(std::string_view text, const Origins& origins);
    static std::optional<Config> config(std::string_view text);

    // From the text of a fetched manifest; none without a "version".
    static std::optional<Manifest> manifest(std::string_view text);

    // 1 to 100 ASCII letters, digits, ".", "_" and "-", without "..".
    static bool isSafeName(std::string_view name);

    // Whether the update check may offer the manifest's version to a system running `kernelRelease`: its
    // version is a stable numeric one, and its minimum system version, when given, is not above the
    // kernel release (by the version rules; an unknown kernel release, empty, is below every minimum).
    static bool isOffered(const Manifest& manifest, std::string_view kernelRelease);
};

} // namespace quillmar
