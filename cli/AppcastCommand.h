#pragma once

#include <CLI/App.hpp>

#include "cli/CliContext.h"

namespace quillmar::cli {

// `quillmar appcast`: reading update feeds and choosing the update they offer.
void addAppcastCommand(CLI::App& app, CliContext& context);

} // namespace quillmar::cli
