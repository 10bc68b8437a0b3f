#include "cli/AppcastCommand.h"

namespace quillmar::cli {

void addAppcastCommand(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
