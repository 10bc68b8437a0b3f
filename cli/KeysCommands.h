#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar keys listen [--count N] [--json]`: every key press as the core sees it, taking none away.
// `quillmar hotkey test SHORTCUT`: grabs one global shortcut and prints each press until interrupted.
void addKeysCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
