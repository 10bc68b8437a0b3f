#include "cli/StitchCommand.h"

namespace quillmar::cli {

void addStitchCommand(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
