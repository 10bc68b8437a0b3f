#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar calc`, `quillmar convert`, `quillmar tz` and `quillmar answer`: the command bar's inline answers.
void addAnswerCommands(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
