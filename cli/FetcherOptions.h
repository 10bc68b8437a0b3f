#pragma once

#include <memory>
#include <string>
#include <vector>

#include <CLI/App.hpp>

#include "cli/CliContext.h"
#include "core/net/SafeFetcher.h"

namespace quillmar::cli {

// `--resolve HOST:PORT:ADDRESS` and `--cacert FILE`, shared by the commands that fetch: they let a local
// server stand in for a real host without loosening the address policy.
struct FetcherOptions {
    std::vector<std::string> resolve;
    std::string caFile;

    void addTo(CLI::App& command);

    // The fetcher, or none after telling the user why (a malformed mapping is a usage error).
    std::unique_ptr<SafeFetcher> makeFetcher(CliContext& context) const;
};

} // namespace quillmar::cli
