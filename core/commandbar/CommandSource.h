#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace quillmar {

// Where a candidate comes from. The declaration order is also the order of the weight table and of
// sections that tie on score.
enum class CommandSource : unsigned char {
    answer,
    apps,
    settings,
    windows,
    menus,
    files,
    clipboard,
    snippets,
    actions,
    emoji,
    scripts,
    web,
};

inline constexpr std::size_t commandSourceCount = 12;

std::span<const CommandSource, commandSourceCount> allCommandSources();

std::string_view rawValue(CommandSource source);

// None for a raw value that names no source.
std::optional<CommandSource> commandSourceFromRawValue(std::string_view raw);

// What a source's match score is multiplied by when ranked. None for `web`: web candidates are never
// ranked by a match, they stand among the fallbacks.
std::optional<double> sourceWeight(CommandSource source);

// The title of the source's section in the bar ("Applications").
std::string_view sectionTitle(CommandSource source);

} // namespace quillmar
