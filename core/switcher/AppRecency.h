#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillmar {

// Whether a client of the recency tracker also wants window previews captured ahead of need.
enum class WarmPreviews { no, yes };

// The order in which the user last used the running applications, kept by watching activations. It runs
// only while some client holds a claim. Main thread.
class AppRecency {
public:
    virtual ~AppRecency() = default;

    // Starts (or keeps) tracking for `client` ("switcher"); a second claim by the same client replaces its
    // first, so the preview wish can change.
    virtual void claim(std::string_view client, WarmPreviews previews) = 0;
    // Ends `client`'s claim; no effect when it has none.
    virtual void release(std::string_view client) = 0;

    // Pids of running applications, the most recently active first. Apps never seen active are missing.
    virtual std::vector<std::int32_t> recentPIDs() const = 0;
};

} // namespace quillmar
