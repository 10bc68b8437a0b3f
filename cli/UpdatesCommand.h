#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar updates check`: checks every installed application for an update.
void addUpdatesCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
