#include "cli/UpdatesCommand.h"

namespace quillmar::cli {

void addUpdatesCommand(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
