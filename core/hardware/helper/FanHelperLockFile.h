#pragma once

#include <cstdint>

namespace quillmar {

// An open lock file (a descriptor on POSIX): the facts the helper checks and the lock it takes. Closing it
// (destroying the object) releases the lock.
class FanHelperLockFile {
public:
    struct Facts {
        bool isRegularFile = false;
        std::uint64_t linkCount = 0;
        std::uint32_t owner = 0;
    };
    enum class LockAttempt { locked, heldElsewhere, failed };

    virtual ~FanHelperLockFile() = default;

    // What the open file is (not what the path names now: the checks must be about the file that is locked).
    virtual Facts facts() const = 0;

    // An exclusive lock that does not wait (flock with LOCK_EX | LOCK_NB).
    virtual LockAttempt tryLockExclusive() = 0;
};

} // namespace quillmar
