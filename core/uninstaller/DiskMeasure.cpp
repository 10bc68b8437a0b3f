#include "core/uninstaller/DiskMeasure.h"

#include <set>
#include <system_error>
#include <utility>

namespace quillmar::DiskMeasure {

namespace fs = std::filesystem;

namespace {

// How many entries are measured between two looks at the cancel flag.
constexpr int cancelCheckInterval = 256;

} // namespace

std::int64_t allocatedSize(const DiskUsage& usage, const fs::path& path, const std::function<bool()>& isCancelled)
{
    auto root = usage.examine(path);
    if (!root)
        return 0;
    std::int64_t total = root->allocatedBytes;
    if (root->kind != FileUsage::Kind::directory)
        return total;

    std::set<std::pair<std::uint64_t, std::uint64_t>> seenHardLinks;
    std::error_code error;
    fs::recursive_directory_iterator entries(path, fs::directory_options::skip_permission_denied, error);
    int sinceCheck = 0;
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        if (isCancelled && ++sinceCheck >= cancelCheckInterval) {
            sinceCheck = 0;
            if (isCancelled())
                break;
        }
        auto entry = usage.examine(entries->path());
        if (!entry)
            continue;
        if (entry->kind == FileUsage::Kind::file && entry->linkCount > 1
            && !seenHardLinks.emplace(entry->device, entry->inode).second)
            continue;
        total += entry->allocatedBytes;
    }
    return total;
}

std::optional<WallTime> lastUsed(const DiskUsage& usage, const fs::path& bundle)
{
    std::optional<WallTime> latest;
    auto consider = [&](const fs::path& path) {
        auto entry = usage.examine(path);
        if (!entry)
            return;
        auto time = std::max(entry->accessed, entry->modified);
        if (!latest || time > *latest)
            latest = time;
    };
    consider(bundle);
    consider(bundle / "Contents");
    consider(bundle / "Contents" / "Info.plist");
    auto executables = bundle / "Contents" / "MacOS";
    consider(executables);
    std::error_code error;
    for (fs::directory_iterator entries(executables, error); !error && entries != fs::directory_iterator();
         entries.increment(error))
        consider(entries->path());
    return latest;
}

} // namespace quillmar::DiskMeasure
