#include "cli/WindowsCommand.h"

namespace quillmar::cli {

void addWindowsCommand(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
