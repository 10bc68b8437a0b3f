#include "core/commandbar/CommandSource.h"

#include <array>

namespace quillmar {

namespace {

struct SourceInfo {
    std::string_view rawValue;
    double weight; // negative: never ranked by a match
    std::string_view sectionTitle;
};

constexpr std::array<SourceInfo, commandSourceCount> sourceTable { {
    { "answer", 2.0, "Answers" },
    { "apps", 1.0, "Applications" },
    { "settings", 0.86, "Settings" },
    { "windows", 0.84, "Windows" },
    { "menus", 0.8, "Menu Items" },
    { "files", 0.74, "Files" },
    { "clipboard", 0.62, "Clipboard" },
    { "snippets", 0.72, "Snippets" },
    { "actions", 0.9, "Actions" },
    { "emoji", 0.55, "Emoji" },
    { "scripts", 0.92, "Scripts" },
    { "web", -1.0, "Web" },
} };

constexpr std::array<CommandSource, commandSourceCount> sources {
    CommandSource::answer,
    CommandSource::apps,
    CommandSource::settings,
    CommandSource::windows,
    CommandSource::menus,
    CommandSource::files,
    CommandSource::clipboard,
    CommandSource::snippets,
    CommandSource::actions,
    CommandSource::emoji,
    CommandSource::scripts,
    CommandSource::web,
};

const SourceInfo& info(CommandSource source)
{
    return sourceTable[static_cast<std::size_t>(source)];
}

} // namespace

std::span<const CommandSource, commandSourceCount> allCommandSources()
{
    return sources;
}

std::string_view rawValue(CommandSource source)
{
    return info(source).rawValue;
}

std::optional<CommandSource> commandSourceFromRawValue(std::string_view raw)
{
    for (auto source : sources) {
        if (info(source).rawValue == raw)
            return source;
    }
    return std::nullopt;
}

std::optional<double> sourceWeight(CommandSource source)
{
    double weight = info(source).weight;
    if (weight < 0)
        return std::nullopt;
    return weight;
}

std::string_view sectionTitle(CommandSource source)
{
    return info(source).sectionTitle;
}

} // namespace quillmar
