#pragma once

namespace quillmar::cli {

// The exit codes every command follows.
enum class ExitCode : int {
    done = 0, // done, or an answer was printed
    noAnswer = 1, // no answer (nothing on stdout), or a refusal (a short sentence on stderr)
    usage = 2, // the command line itself is wrong
};

} // namespace quillmar::cli
