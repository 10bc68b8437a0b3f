#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "core/uninstaller/DiskUsage.h"
#include "core/uninstaller/Recycler.h"
#include "core/uninstaller/SigningInfo.h"

namespace quillmar::testing_support {

// Answers the same signing details for every bundle.
class FakeSigningInfo final : public SigningInfo {
public:
    SigningDetails answer;
    SigningDetails details(const std::filesystem::path&) override { return answer; }
};

// Every existing entry takes `bytesPerEntry`, and every entry was last touched at `time`; links are seen
// as themselves.
class FakeDiskUsage final : public DiskUsage {
public:
    std::int64_t bytesPerEntry = 4096;
    WallTime time = WallTime(std::chrono::seconds(1'700'000'000));

    std::optional<FileUsage> examine(const std::filesystem::path& path) const override
    {
        std::error_code error;
        auto status = std::filesystem::symlink_status(path, error);
        if (error || !std::filesystem::exists(status))
            return std::nullopt;
        FileUsage usage;
        usage.kind = std::filesystem::is_directory(status) ? FileUsage::Kind::directory
            : std::filesystem::is_symlink(status)          ? FileUsage::Kind::symlink
                                                           : FileUsage::Kind::file;
        usage.allocatedBytes = bytesPerEntry;
        usage.accessed = time;
        usage.modified = time;
        return usage;
    }
};

// Records each batch and "moves" a path by forgetting nothing on disk; paths in `refuse` fail with their
// reason. `cancelAfterBatches` makes the caller's cancel check irrelevant: it counts batches only.
class FakeRecycler final : public Recycler {
public:
    std::map<std::filesystem::path, RecycleFailure::Reason> refuse;
    std::vector<std::vector<std::filesystem::path>> batches;
    std::function<void()> duringBatch; // may be empty; runs after the batch is recorded

    std::vector<std::filesystem::path> handled() const
    {
        std::vector<std::filesystem::path> all;
        for (const auto& batch : batches)
            all.insert(all.end(), batch.begin(), batch.end());
        return all;
    }

protected:
    std::vector<RecycleFailure> recycleBatch(std::span<const std::filesystem::path> paths) override
    {
        batches.emplace_back(paths.begin(), paths.end());
        if (duringBatch)
            duringBatch();
        std::vector<RecycleFailure> failures;
        for (const auto& path : paths) {
            auto refused = refuse.find(path);
            if (refused != refuse.end())
                failures.push_back({ path, refused->second, "refused by the test" });
        }
        return failures;
    }
};

} // namespace quillmar::testing_support
