#pragma once

#include <iosfwd>
#include <memory>

#include "core/settings/FileLocations.h"

namespace quillmar::cli {

// Runs `quillmar` with `argv`, reading `in` and writing `out` and `err`; returns the process exit code.
int runCommandLine(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err,
    std::unique_ptr<FileLocations> locations);

} // namespace quillmar::cli
