#include "cli/NetCommands.h"

namespace quillmar::cli {

void addNetCommands(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
