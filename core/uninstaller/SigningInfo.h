#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillmar {

// What an application's code signature declares about it.
struct SigningDetails {
    std::optional<std::string> teamIdentifier; // the ten-character developer team ("ABCDE12345")
    std::vector<std::string> applicationGroups; // the entitlement "com.apple.security.application-groups"

    bool operator==(const SigningDetails&) const = default;
};

// Port: reads the code signature of a bundle. Called from the uninstaller's background queue, so an
// implementation must be safe to call from any thread. A bundle that is not signed, or a system that
// cannot read signatures, gives empty details; this is never an error.
class SigningInfo {
public:
    virtual ~SigningInfo() = default;

    virtual SigningDetails details(const std::filesystem::path& bundle) = 0;
};

} // namespace quillmar
