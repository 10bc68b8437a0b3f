#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar match` and `quillmar rank`: the command bar's matcher and ranker.
void addCommandBarCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
