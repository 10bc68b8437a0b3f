#include "cli/AnswerCommands.h"

namespace quillmar::cli {

void addAnswerCommands(CLI::App&, CliContext&)
{
}

} // namespace quillmar::cli
