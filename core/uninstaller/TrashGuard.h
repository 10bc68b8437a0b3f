#pragma once

#include <array>
#include <filesystem>
#include <span>
#include <string_view>

namespace quillmar {

// The last word on what may be moved to the Trash, whatever the leftover matching says. Pure path rules
// plus a look at the file system for symbolic links.
class TrashGuard final {
public:
    // Never trashed, exactly these (after standardising).
    static constexpr std::array<std::string_view, 12> systemPaths {
        "/", "/Applications", "/Library", "/System", "/Users", "/usr", "/bin", "/sbin", "/etc", "/var", "/private", "/opt",
    };
    // Never trashed: the home folder itself ("") and these below it.
    static constexpr std::array<std::string_view, 17> homePaths {
        "",
        "Library",
        "Library/Caches",
        "Library/Logs",
        "Documents",
        "Desktop",
        "Downloads",
        "Pictures",
        "Music",
        "Movies",
        "Library/Application Support",
        "Library/Preferences",
        "Library/Containers",
        "Library/Group Containers",
        "Library/Developer",
        "Library/Messages",
        ".Trash",
    };

    // `path` absolute, lexically normalised ("." and ".." resolved, repeated and trailing separators
    // dropped), without following links. A relative path is returned empty.
    static std::filesystem::path standardized(const std::filesystem::path& path);

    // True when `path` may be moved to the Trash: it is absolute, is none of the protected paths (the
    // system ones and those under `home`), and, when it lies below `home`, no component of it below `home`
    // (the last one included) is a symbolic link, so a link planted inside a container cannot redirect the
    // removal elsewhere. A component that cannot be examined counts as a link. An empty `home` protects the
    // system paths only. The answer holds for the moment it is asked: ask again right before moving.
    static bool isSafeToTrash(const std::filesystem::path& path, const std::filesystem::path& home);

    // True when a component of `path` strictly below `base` — the last one included — is a symbolic link
    // or cannot be examined. Both standardised; false when `path` does not lie below `base`.
    static bool hasSymlink(const std::filesystem::path& path, const std::filesystem::path& base);

    // True when `path` equals or lies under one of `excluded` (all standardised, compared by component).
    static bool isExcluded(const std::filesystem::path& path, std::span<const std::filesystem::path> excluded);

    // True when `path` equals `base` or lies under it, by whole components ("/a/bc" is not under "/a/b").
    static bool isWithin(const std::filesystem::path& path, const std::filesystem::path& base);
};

} // namespace quillmar
