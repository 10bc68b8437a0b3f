#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar agents ...`: coding-agent pricing and usage reports.
void addAgentsCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
