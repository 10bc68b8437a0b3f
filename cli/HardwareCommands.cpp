#include "cli/HardwareCommands.h"

namespace quillmar::cli {

void addHardwareCommands(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
