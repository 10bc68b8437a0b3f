#pragma once

#include <string_view>

#include "core/base/Result.h"

namespace quillmar {

// Keeps the machine from going to sleep while it is idle, for keep-awake. One hold at a time. Main thread only;
// calls may wait on the system briefly (about a second at most).
class SleepInhibitor {
public:
    virtual ~SleepInhibitor() = default;

    // Starts holding off idle sleep; `reason` is a short sentence the system may show ("Keep awake is on").
    // Holding already is success and keeps the first hold. An Error when the system offers no way to do it.
    virtual Result<void> inhibit(std::string_view reason) = 0;

    // Ends the hold, restoring normal sleep; nothing when none is held.
    virtual void release() = 0;

    virtual bool isInhibiting() const = 0;
};

} // namespace quillmar
