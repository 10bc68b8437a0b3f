#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar url check` and `quillmar fetch`: the address policy and the hardened fetcher.
void addNetCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
