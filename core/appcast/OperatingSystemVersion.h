#pragma once

#include <string>

#include <fmt/format.h>

namespace quillmar {

// The running system's version, such as 14.4.1.
struct OperatingSystemVersion {
    int majorVersion = 0;
    int minorVersion = 0;
    int patchVersion = 0;

    // "major.minor.patch", all three always written ("14.0.0").
    std::string text() const { return fmt::format("{}.{}.{}", majorVersion, minorVersion, patchVersion); }
};

} // namespace quillmar
