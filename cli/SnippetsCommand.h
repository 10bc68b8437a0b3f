#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar snippets ...`: the snippet library, matching and expansion.
void addSnippetsCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
