#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/windows/AppSnapshot.h"

namespace quillmar {

// The running applications and which one is in front. Main thread.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;

    // Applications that can own regular windows (not agents or daemons), in no particular order.
    virtual std::vector<AppSnapshot> applications() const = 0;

    // The frontmost application's process; none when there is none or it has exited.
    virtual std::optional<std::int32_t> frontmostProcess() const = 0;

    // Brings the application to the front; with `window`, makes that window of it the key window (on
    // macOS through private functions looked up at run time). False when it could not.
    virtual bool activate(std::int32_t pid, std::optional<std::uint32_t> window) = 0;
};

} // namespace quillmar
