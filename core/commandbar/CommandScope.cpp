#include "core/commandbar/CommandScope.h"

#include <algorithm>
#include <array>

namespace quillmar {

namespace {

struct ScopeInfo {
    std::string_view rawValue;
    std::string_view title;
    std::string_view symbol;
    CommandSource source; // the one source of every scope but `all`
};

constexpr std::array<ScopeInfo, commandScopeCount> scopeTable { {
    { "all", "All", "magnifyingglass", CommandSource::answer },
    { "apps", "Apps", "app", CommandSource::apps },
    { "files", "Files", "doc", CommandSource::files },
    { "windows", "Windows", "macwindow", CommandSource::windows },
    { "menus", "Menus", "filemenu.and.selection", CommandSource::menus },
    { "clipboard", "Clipboard", "doc.on.clipboard", CommandSource::clipboard },
    { "snippets", "Snippets", "text.quote", CommandSource::snippets },
    { "actions", "Actions", "bolt", CommandSource::actions },
    { "emoji", "Emoji", "face.smiling", CommandSource::emoji },
    { "scripts", "Scripts", "terminal", CommandSource::scripts },
} };

constexpr std::array<CommandScope, commandScopeCount> scopes {
    CommandScope::all,
    CommandScope::apps,
    CommandScope::files,
    CommandScope::windows,
    CommandScope::menus,
    CommandScope::clipboard,
    CommandScope::snippets,
    CommandScope::actions,
    CommandScope::emoji,
    CommandScope::scripts,
};

const ScopeInfo& info(CommandScope scope)
{
    return scopeTable[static_cast<std::size_t>(scope)];
}

} // namespace

std::span<const CommandScope, commandScopeCount> allCommandScopes()
{
    return scopes;
}

std::string_view rawValue(CommandScope scope)
{
    return info(scope).rawValue;
}

std::optional<CommandScope> commandScopeFromRawValue(std::string_view raw)
{
    for (auto scope : scopes) {
        if (info(scope).rawValue == raw)
            return scope;
    }
    return std::nullopt;
}

std::string_view title(CommandScope scope)
{
    return info(scope).title;
}

std::string_view symbol(CommandScope scope)
{
    return info(scope).symbol;
}

std::span<const CommandSource> sources(CommandScope scope)
{
    if (scope == CommandScope::all)
        return allCommandSources();
    return { &info(scope).source, 1 };
}

bool covers(CommandScope scope, CommandSource source)
{
    return scope == CommandScope::all || info(scope).source == source;
}

} // namespace quillmar
