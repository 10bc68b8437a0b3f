#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar apps`, `quillmar electron` and `quillmar appstore`: the installed applications and their update sources.
void addAppsCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
