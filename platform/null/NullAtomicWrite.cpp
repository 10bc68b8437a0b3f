#include "core/base/Files.h"

namespace quillmar {

// A system without a file backend cannot promise a whole-or-nothing replacement, so nothing is written.
Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view)
{
    return Error { "file.unwritable", "Files can't be saved on this system.", path.string() };
}

} // namespace quillmar
