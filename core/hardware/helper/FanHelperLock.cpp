#include "core/hardware/helper/FanHelperLock.h"

#include <fmt/format.h>

namespace quillmar {

FanHelperLock FanHelperLock::acquire(FanHelperFiles& files, const std::filesystem::path& path, std::uint32_t expectedOwner)
{
    auto opened = files.openLockFile(path, fileMode);
    if (!opened)
        return FanHelperLock(Outcome::refused, nullptr, fmt::format("cannot open: {}", opened.error().message));
    auto file = std::move(opened).value();
    auto facts = file->facts();
    if (!facts.isRegularFile)
        return FanHelperLock(Outcome::refused, nullptr, "not a regular file");
    if (facts.linkCount != 1)
        return FanHelperLock(Outcome::refused, nullptr, fmt::format("{} links", facts.linkCount));
    if (facts.owner != expectedOwner)
        return FanHelperLock(Outcome::refused, nullptr, fmt::format("owned by {}", facts.owner));
    switch (file->tryLockExclusive()) {
    case FanHelperLockFile::LockAttempt::locked:
        return FanHelperLock(Outcome::acquired, std::move(file), {});
    case FanHelperLockFile::LockAttempt::heldElsewhere:
        return FanHelperLock(Outcome::heldElsewhere, nullptr, "held by another process");
    case FanHelperLockFile::LockAttempt::failed:
        break;
    }
    return FanHelperLock(Outcome::refused, nullptr, "cannot be locked");
}

} // namespace quillmar
