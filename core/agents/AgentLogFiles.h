#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "core/agents/AgentLogLocations.h"
#include "core/agents/UsageRecord.h"

namespace quillmar {

struct AgentLogFile {
    Agent agent = Agent::claude;
    std::filesystem::path path;
    std::uintmax_t size = 0; // bytes
};

struct AgentLogSearch {
    std::vector<AgentLogFile> files; // folder by folder in the order searched, by path within one; each once
    std::vector<std::filesystem::path> searchedFolders; // every folder looked in, found or not, in order
};

// Every ".jsonl" file below the agents' log folders, at any depth (Claude Code keeps sub-agents' logs in
// folders below their session, Codex sorts sessions into year/month/day folders). `agent` none means both.
// Missing or unreadable folders are searched and yield nothing; a folder listed twice is searched once.
AgentLogSearch findAgentLogs(const AgentLogLocations& locations, std::optional<Agent> agent);

} // namespace quillmar
