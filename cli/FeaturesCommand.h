#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar features list [--json]`, `quillmar features enable ID`, `quillmar features disable ID`.
void addFeaturesCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
