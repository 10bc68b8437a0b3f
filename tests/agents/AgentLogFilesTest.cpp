#include <gtest/gtest.h>

#include <map>

#include "core/agents/AgentLogFiles.h"
#include "tests/agents/LogFixtures.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

AgentLogLocations::Environment environment(std::map<std::string, std::string> variables)
{
    return [variables = std::move(variables)](const char* name) -> std::optional<std::string> {
        auto found = variables.find(name);
        if (found == variables.end())
            return std::nullopt;
        return found->second;
    };
}

TEST(AgentLogLocations, FoldersFromHomeAndVariables)
{
    struct Row {
        const char* name;
        std::map<std::string, std::string> variables;
        std::vector<std::string> claude;
        std::string codex;
    };
    const Row rows[] = {
        { "defaults", { { "HOME", "/home/a" } }, { "/home/a/.claude/projects", "/home/a/.config/claude/projects" },
            "/home/a/.codex/sessions" },
        { "config folders listed with commas, blanks and the home sign",
            { { "HOME", "/home/a" }, { "CLAUDE_CONFIG_DIR", " /x/one ,, ~/two" }, { "CODEX_HOME", "~/codex" } },
            { "/home/a/.claude/projects", "/home/a/.config/claude/projects", "/x/one/projects", "/home/a/two/projects" },
            "/home/a/codex/sessions" },
        { "empty variables are not set", { { "HOME", "/h" }, { "CLAUDE_CONFIG_DIR", "" }, { "CODEX_HOME", "" } },
            { "/h/.claude/projects", "/h/.config/claude/projects" }, "/h/.codex/sessions" },
        { "no home", {}, { "./.claude/projects", "./.config/claude/projects" }, "./.codex/sessions" },
    };
    for (const auto& row : rows) {
        auto locations = AgentLogLocations::fromEnvironment(environment(row.variables));
        std::vector<std::string> claude;
        for (const auto& folder : locations.claudeProjectFolders)
            claude.push_back(folder.string());
        EXPECT_EQ(claude, row.claude) << row.name;
        EXPECT_EQ(locations.codexSessionFolder.string(), row.codex) << row.name;
    }
}

TEST(AgentLogFiles, FindsSessionAndSubAgentLogsOnceEach)
{
    TemporaryFolder folder;
    auto home = folder.path();
    auto projects = home / ".claude" / "projects";
    fixtures::writeLines(projects / "-home-a-app" / "s1.jsonl", { "{}" });
    fixtures::writeLines(projects / "-home-a-app" / "s1" / "subagents" / "agent-1.jsonl", { "{}" });
    fixtures::writeLines(projects / "-home-a-app" / "notes.txt", { "not a log" });
    fixtures::writeLines(home / "other" / "projects" / "p" / "s2.jsonl", { "{}" });
    fixtures::writeLines(home / ".codex" / "sessions" / "2025" / "10" / "01" / "rollout-1.jsonl", { "{}", "{}" });

    auto locations = AgentLogLocations::fromEnvironment(environment({ { "HOME", home.string() },
        { "CLAUDE_CONFIG_DIR", (home / ".claude").string() + "," + (home / "other").string() } }));
    auto all = findAgentLogs(locations, std::nullopt);
    std::vector<std::pair<Agent, std::string>> found;
    for (const auto& file : all.files)
        found.emplace_back(file.agent, std::filesystem::relative(file.path, home).string());
    EXPECT_EQ(found, (std::vector<std::pair<Agent, std::string>> {
                         { Agent::claude, ".claude/projects/-home-a-app/s1/subagents/agent-1.jsonl" },
                         { Agent::claude, ".claude/projects/-home-a-app/s1.jsonl" },
                         { Agent::claude, "other/projects/p/s2.jsonl" },
                         { Agent::codex, ".codex/sessions/2025/10/01/rollout-1.jsonl" },
                     }));
    EXPECT_EQ(all.files.back().size, 6u);
    EXPECT_EQ(all.searchedFolders.size(), 4u) << "~/.claude listed again is searched once";

    auto codex = findAgentLogs(locations, Agent::codex);
    ASSERT_EQ(codex.files.size(), 1u);
    EXPECT_EQ(codex.searchedFolders, (std::vector<std::filesystem::path> { home / ".codex" / "sessions" }));
}

} // namespace
} // namespace quillmar
