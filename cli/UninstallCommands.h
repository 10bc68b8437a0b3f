#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar uninstall` and `quillmar trash`: removing an application with its leftovers.
void addUninstallCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
