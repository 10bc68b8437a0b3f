#include "platform/posix/PosixDiskUsage.h"

#include <chrono>

#include <sys/stat.h>

namespace quillmar {

namespace {

constexpr std::int64_t blockUnit = 512;

WallTime wallTime(const struct timespec& time)
{
    auto sinceEpoch = std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    return WallTime(std::chrono::duration_cast<WallTime::duration>(sinceEpoch));
}

FileUsage::Kind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return FileUsage::Kind::file;
    if (S_ISDIR(mode))
        return FileUsage::Kind::directory;
    if (S_ISLNK(mode))
        return FileUsage::Kind::symlink;
    return FileUsage::Kind::other;
}

} // namespace

std::optional<FileUsage> PosixDiskUsage::examine(const std::filesystem::path& path) const
{
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    FileUsage usage;
    usage.kind = kindOf(status.st_mode);
    usage.allocatedBytes = static_cast<std::int64_t>(status.st_blocks) * blockUnit;
#if defined(__APPLE__)
    usage.accessed = wallTime(status.st_atimespec);
    usage.modified = wallTime(status.st_mtimespec);
#else
    usage.accessed = wallTime(status.st_atim);
    usage.modified = wallTime(status.st_mtim);
#endif
    usage.device = static_cast<std::uint64_t>(status.st_dev);
    usage.inode = static_cast<std::uint64_t>(status.st_ino);
    usage.linkCount = static_cast<std::uint64_t>(status.st_nlink);
    return usage;
}

} // namespace quillmar
