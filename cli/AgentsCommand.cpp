#include "cli/AgentsCommand.h"

namespace quillmar::cli {

void addAgentsCommand(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
