#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace quillmar {

// One card of the switcher: a window, or an application that has no window to show.
struct SwitcherItem {
    std::optional<std::uint32_t> windowNumber; // none for an application's windowless card
    std::int32_t pid = 0;
    std::string appName;
    std::string title;

    // "w<window number>" for a window, "a<pid>" for a windowless card: stable for the card's life, so a
    // selection and a closing mark survive refiltering.
    std::string id() const;

    bool isWindowless() const { return !windowNumber.has_value(); }

    friend bool operator==(const SwitcherItem&, const SwitcherItem&) = default;
};

} // namespace quillmar

// Hashing follows the identity: the window number for a window, the pid for a windowless card.
template <>
struct std::hash<quillmar::SwitcherItem> {
    std::size_t operator()(const quillmar::SwitcherItem& item) const noexcept
    {
        if (item.windowNumber)
            return std::hash<std::uint64_t> {}(*item.windowNumber);
        // Kept apart from window numbers, which use the low 32 bits only.
        return std::hash<std::uint64_t> {}((std::uint64_t { 1 } << 32) | static_cast<std::uint32_t>(item.pid));
    }
};
