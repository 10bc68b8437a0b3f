#include "cli/VersionCommand.h"

namespace quillmar::cli {

void addVersionCommand(CLI::App& /*app*/, CliContext& /*context*/)
{
}

} // namespace quillmar::cli
