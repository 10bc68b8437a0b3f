#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar stitch`: scrolling-capture stitching of PNG frames.
void addStitchCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
