#include "core/base/Files.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <mutex>
#include <optional>
#include <set>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "core/base/Diagnostics.h"
#include "core/base/FileSystemCalls.h"

namespace quillmar {

namespace {

constexpr std::string_view temporaryMarker = ".tmp-";

std::filesystem::path temporaryFor(const std::filesystem::path& path, long pid)
{
    auto temporary = path;
    temporary += fmt::format("{}{}", temporaryMarker, pid);
    return temporary;
}

// The pid in "<name>.tmp-<pid>", none when `candidate` is not a temporary of `name`.
std::optional<long> temporaryPid(std::string_view candidate, std::string_view name)
{
    if (!candidate.starts_with(name) || !candidate.substr(name.size()).starts_with(temporaryMarker))
        return std::nullopt;
    auto digits = candidate.substr(name.size() + temporaryMarker.size());
    long pid = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), pid);
    if (digits.empty() || error != std::errc() || end != digits.data() + digits.size() || pid <= 0)
        return std::nullopt;
    return pid;
}

// True the first time `path` is asked about in this process.
bool firstTimeFor(const std::filesystem::path& path)
{
    static std::mutex mutex;
    static std::set<std::filesystem::path> seen;
    std::lock_guard lock(mutex);
    return seen.insert(path.lexically_normal()).second;
}

} // namespace

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

Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view contents)
{
    std::error_code error;
    auto folder = path.parent_path();
    if (!folder.empty())
        std::filesystem::create_directories(folder, error);
    if (error)
        return Error { "file.unwritable", fmt::format("Could not create {}.", folder.string()), error.message() };
    if (firstTimeFor(path))
        removeStaleTemporaries(path);
    return FileSystemCalls::replaceThroughTemporary(path, temporaryFor(path, FileSystemCalls::currentProcessId()),
        contents);
}

std::size_t removeStaleTemporaries(const std::filesystem::path& path)
{
    auto name = path.filename().string();
    auto folder = path.parent_path().empty() ? std::filesystem::path(".") : path.parent_path();
    std::error_code error;
    std::filesystem::directory_iterator entries(folder, error);
    if (error)
        return 0;
    std::vector<std::filesystem::path> stale;
    for (const auto& entry : entries) {
        auto pid = temporaryPid(entry.path().filename().string(), name);
        if (pid && !FileSystemCalls::processIsRunning(*pid))
            stale.push_back(entry.path());
    }
    std::size_t removed = 0;
    for (const auto& temporary : stale) {
        if (std::filesystem::remove(temporary, error))
            ++removed;
        else if (error)
            diagnostic("files: cannot remove {}: {}", temporary.string(), error.message());
    }
    return removed;
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
