#include "cli/SnippetsCommand.h"

namespace quillmar::cli {

void addSnippetsCommand(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
