#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string_view>

namespace quillmar {

// Why an application may not be removed at all, checked before anything is searched.
namespace AppRefusal {

inline constexpr std::string_view alias = "That's an alias. Drop the app itself.";
inline constexpr std::string_view notAnApp = "That isn't an app.";
inline constexpr std::string_view system = "macOS needs this app.";
inline constexpr std::string_view nested = "This app lives inside another app.";
inline constexpr std::string_view noIdentifier = "This app has no bundle identifier.";
inline constexpr std::string_view itself = "Quillmar can't remove itself.";
inline constexpr std::string_view protectedApp = "Apple and shared system components stay.";

// The sentence of the first rule that applies to the item at `path`, or none when it may be removed:
//  1. it is a symbolic link, or an alias file (by content): `alias`;
//  2. its extension is not "app": `notAnApp`;
//  3. its path begins with "/System/" or "/Library/Apple/": `system`;
//  4. its path contains ".app/" (it sits inside another application): `nested`;
//  5. it has no bundle identifier (no readable information property list, or an empty identifier): `noIdentifier`;
//  6. the identifier is this suite's own: `itself`;
//  7. the identifier is protected: `protectedApp`.
// A relative `path` is taken from the current folder; the path rules see it standardised.
std::optional<std::string_view> reason(const std::filesystem::path& path);

} // namespace AppRefusal

} // namespace quillmar
