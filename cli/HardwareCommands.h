#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar smc`, `quillmar fan`, `quillmar ddc` and `quillmar displays`: fans and external displays.
void addHardwareCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
