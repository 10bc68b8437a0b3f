#pragma once

#include <optional>
#include <string_view>

namespace quillmar {

// Reads of the system's own preferences ("com.apple.dock"), for the features that must not fight them.
class SystemPreferences {
public:
    virtual ~SystemPreferences() = default;

    // The value of `key` in `domain` as a number (true and false read as 1 and 0); none when it is missing
    // or is not a number.
    virtual std::optional<double> number(std::string_view domain, std::string_view key) const = 0;
};

} // namespace quillmar
