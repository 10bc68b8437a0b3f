#include "cli/AppsCommands.h"

namespace quillmar::cli {

void addAppsCommands(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
