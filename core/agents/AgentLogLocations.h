#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillmar {

// Where the agents keep their logs on this machine, worked out from the home folder and the agents'
// environment variables, which the caller supplies (tests point them at temporary folders).
struct AgentLogLocations {
    // Reads one environment variable; none when it is not set.
    using Environment = std::function<std::optional<std::string>(const char* name)>;

    // Folders of Claude Code session logs: "~/.claude/projects", "~/.config/claude/projects", and
    // "projects" in each folder that CLAUDE_CONFIG_DIR lists (comma-separated), in that order.
    std::vector<std::filesystem::path> claudeProjectFolders;
    // Codex session logs: "$CODEX_HOME/sessions", by default "~/.codex/sessions".
    std::filesystem::path codexSessionFolder;

    // HOME, CLAUDE_CONFIG_DIR and CODEX_HOME from `environment`. Without HOME the current folder stands
    // in for it; a leading "~/" in a variable means the home folder.
    static AgentLogLocations fromEnvironment(const Environment& environment);
};

} // namespace quillmar
