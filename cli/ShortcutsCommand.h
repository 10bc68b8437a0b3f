#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar shortcuts list [--json]`: every action, its shortcut and whether it would be registered now.
void addShortcutsCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
