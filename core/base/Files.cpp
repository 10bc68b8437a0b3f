#include "core/base/Files.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include <fmt/format.h>

namespace quillmar {

Result<std::optional<std::string>> readFile(const std::filesystem::path& path)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        return std::optional<std::string>();
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return Error { "file.unreadable", fmt::format("Could not read {}.", path.string()), path.string() };
    std::string contents((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (stream.bad())
        return Error { "file.unreadable", fmt::format("Could not read {}.", path.string()), path.string() };
    return std::optional<std::string>(std::move(contents));
}

Result<std::filesystem::path> moveAside(const std::filesystem::path& path, std::string_view stamp)
{
    auto target = path;
    target += fmt::format(".unreadable-{}", stamp);
    // Never replace an earlier copy that was set aside in the same second.
    std::error_code error;
    for (int suffix = 2; std::filesystem::exists(target, error); ++suffix) {
        target = path;
        target += fmt::format(".unreadable-{}-{}", stamp, suffix);
    }
    std::filesystem::rename(path, target, error);
    if (error)
        return Error { "file.unmovable", fmt::format("Could not move {} aside.", path.string()), error.message() };
    return target;
}

} // namespace quillmar
