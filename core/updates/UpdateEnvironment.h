#pragma once

#include <cstddef>
#include <string>

#include "core/appcast/OperatingSystemVersion.h"
#include "core/apps/AppStoreLookup.h"

namespace quillmar {

// What an update check judges the sources against, and how it reaches them.
struct UpdateEnvironment {
    OperatingSystemVersion system;  // the running system, for feeds' minimum and maximum versions
    std::string architecture;       // "arm64" or "x86_64", for feeds' hardware requirements
    std::string kernelRelease;      // for Electron manifests' minimum system version ("24.1.0")
    std::string country = "us";     // the store's country, lower-case
    AppStoreLookup::Origins storeOrigins;
    std::size_t parallelFetches = 4; // fetches running at once (the fetcher limits each host to two)
    std::size_t storeBatchSize = 50; // bundle identifiers asked about in one store lookup

    // Caps on reply sizes, in bytes.
    static constexpr std::size_t feedCap = 2'000'000;
    static constexpr std::size_t storeCap = 2'000'000;
    static constexpr std::size_t manifestCap = 256'000;
};

} // namespace quillmar
