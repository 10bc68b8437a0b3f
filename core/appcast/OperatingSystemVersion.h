#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include <fmt/format.h>

namespace quillmar {

// The running system's version, such as 14.4.1.
struct OperatingSystemVersion {
    int majorVersion = 0;
    int minorVersion = 0;
    int patchVersion = 0;

    // "major.minor.patch", all three always written ("14.0.0").
    std::string text() const { return fmt::format("{}.{}.{}", majorVersion, minorVersion, patchVersion); }

    // "14", "14.4" or "14.4.1": one to three whole numbers of at most six digits each, missing ones 0.
    // None for anything else (signs, spaces, empty parts, a fourth part).
    static std::optional<OperatingSystemVersion> parse(std::string_view text)
    {
        int numbers[3] = { 0, 0, 0 };
        std::size_t count = 0;
        while (true) {
            auto dot = text.find('.');
            auto piece = text.substr(0, dot);
            if (count == 3 || piece.empty() || piece.size() > 6 || piece.find_first_not_of("0123456789") != std::string_view::npos)
                return std::nullopt;
            std::from_chars(piece.data(), piece.data() + piece.size(), numbers[count++]);
            if (dot == std::string_view::npos)
                break;
            text.remove_prefix(dot + 1);
        }
        return OperatingSystemVersion { numbers[0], numbers[1], numbers[2] };
    }
};

} // namespace quillmar
