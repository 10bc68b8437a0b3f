#include "core/agents/AgentLogLocations.h"

#include <string_view>

#include "core/base/Text.h"

namespace quillmar {

namespace {

std::filesystem::path expandHome(std::string_view text, const std::filesystem::path& home)
{
    if (text == "~")
        return home;
    if (text.starts_with("~/"))
        return home / std::filesystem::path(text.substr(2));
    return std::filesystem::path(text);
}

} // namespace

AgentLogLocations AgentLogLocations::fromEnvironment(const Environment& environment)
{
    auto homeValue = environment("HOME");
    std::filesystem::path home = homeValue && !homeValue->empty() ? std::filesystem::path(*homeValue) : ".";

    AgentLogLocations locations;
    locations.claudeProjectFolders.push_back(home / ".claude" / "projects");
    locations.claudeProjectFolders.push_back(home / ".config" / "claude" / "projects");
    if (auto list = environment("CLAUDE_CONFIG_DIR")) {
        std::string_view rest = *list;
        while (!rest.empty()) {
            auto comma = rest.find(',');
            auto entry = trimmed(rest.substr(0, comma));
            if (!entry.empty())
                locations.claudeProjectFolders.push_back(expandHome(entry, home) / "projects");
            rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
        }
    }
    auto codexHome = environment("CODEX_HOME");
    auto codexValue = codexHome ? trimmed(*codexHome) : std::string_view();
    locations.codexSessionFolder = (codexValue.empty() ? home / ".codex" : expandHome(codexValue, home)) / "sessions";
    return locations;
}

} // namespace quillmar
