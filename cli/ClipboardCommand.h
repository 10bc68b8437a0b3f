#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar clipboard ...`: the clipboard history (read-only), and the clipboard itself.
void addClipboardCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
