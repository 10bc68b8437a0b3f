#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "core/base/Result.h"
#include "core/hardware/helper/FanHelperFiles.h"

namespace quillmar {

// The lock that keeps the fan helper to one process.
class FanHelperLock final {
public:
    static constexpr std::uint32_t fileMode = 0600;

    enum class Outcome {
        acquired, // this process is the helper
        heldElsewhere, // another helper runs: exit quietly
        refused, // the file is not what it must be, or cannot be opened or locked: exit
    };

    // Opens the lock file, checks that it is a regular file with one link owned by `expectedOwner` (so that
    // nobody can plant a link or a shared file there), and takes an exclusive lock without waiting.
    static FanHelperLock acquire(FanHelperFiles& files, const std::filesystem::path& path, std::uint32_t expectedOwner);

    Outcome outcome() const { return m_outcome; }

    // Why it was refused, for the log.
    const std::string& reason() const { return m_reason; }

private:
    FanHelperLock(Outcome outcome, std::unique_ptr<FanHelperLockFile> file, std::string reason)
        : m_outcome(outcome), m_file(std::move(file)), m_reason(std::move(reason)) { }

    Outcome m_outcome;
    std::unique_ptr<FanHelperLockFile> m_file;
    std::string m_reason;
};

} // namespace quillmar
