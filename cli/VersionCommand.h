#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar version`: comparing application versions and judging catalogue versions.
void addVersionCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
