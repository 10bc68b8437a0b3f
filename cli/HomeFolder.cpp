#include "cli/HomeFolder.h"

#include <cstdlib>
#include <system_error>

namespace quillmar::cli {

std::optional<std::filesystem::path> homeFolder(CliContext& context)
{
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        context.refuse(noHomeSentence);
        return std::nullopt;
    }
    std::error_code error;
    auto absolute = std::filesystem::absolute(home, error);
    return (error ? std::filesystem::path(home) : absolute).lexically_normal();
}

} // namespace quillmar::cli
