#include "core/base/FileSystemCalls.h"

namespace quillmar::FileSystemCalls {

// A system without a file backend cannot promise a whole-or-nothing replacement, so nothing is written, and
// with no way to ask about processes every temporary is taken for a live one's and left alone.
long currentProcessId()
{
    return 0;
}

bool processIsRunning(long)
{
    return true;
}

Result<void> replaceThroughTemporary(const std::filesystem::path& path, const std::filesystem::path&,
    std::string_view)
{
    return Error { "file.unwritable", "Files can't be saved on this system.", path.string() };
}

} // namespace quillmar::FileSystemCalls
