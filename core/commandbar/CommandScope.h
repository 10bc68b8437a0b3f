#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "core/commandbar/CommandSource.h"

namespace quillmar {

// What the bar searches, chosen with the scope chip; the bar starts in `all`.
enum class CommandScope : unsigned char {
    all,
    apps,
    files,
    windows,
    menus,
    clipboard,
    snippets,
    actions,
    emoji,
    scripts,
};

inline constexpr std::size_t commandScopeCount = 10;

std::span<const CommandScope, commandScopeCount> allCommandScopes();

std::string_view rawValue(CommandScope scope);

// None for a raw value that names no scope.
std::optional<CommandScope> commandScopeFromRawValue(std::string_view raw);

// For the scope chip: a title ("Clipboard") and a symbol name.
std::string_view title(CommandScope scope);
std::string_view symbol(CommandScope scope);

// The sources the scope searches: every source for `all`, else the scope's one source.
std::span<const CommandSource> sources(CommandScope scope);

bool covers(CommandScope scope, CommandSource source);

} // namespace quillmar
