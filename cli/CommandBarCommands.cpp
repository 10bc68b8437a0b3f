#include "cli/CommandBarCommands.h"

namespace quillmar::cli {

void addCommandBarCommands(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
