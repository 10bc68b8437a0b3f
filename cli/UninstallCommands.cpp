#include "cli/UninstallCommands.h"

namespace quillmar::cli {

void addUninstallCommands(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
