#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar layout`: the frame of a window layout within an area.
void addWindowsCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
