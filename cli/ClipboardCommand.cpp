#include "cli/ClipboardCommand.h"

namespace quillmar::cli {

void addClipboardCommand(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
