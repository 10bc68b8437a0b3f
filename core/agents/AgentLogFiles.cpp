#include "core/agents/AgentLogFiles.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace quillmar {

namespace {

namespace fs = std::filesystem;

fs::path identity(const fs::path& path)
{
    std::error_code error;
    auto canonical = fs::weakly_canonical(path, error);
    return error ? path.lexically_normal() : canonical;
}

void collect(Agent agent, const fs::path& folder, std::set<fs::path>& seen, std::vector<AgentLogFile>& files)
{
    std::error_code error;
    if (!fs::is_directory(folder, error))
        return;
    fs::recursive_directory_iterator walk(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
        const auto& entry = *walk;
        std::error_code entryError;
        if (entry.path().extension() != ".jsonl" || !entry.is_regular_file(entryError))
            continue;
        if (!seen.insert(identity(entry.path())).second)
            continue;
        auto size = entry.file_size(entryError);
        files.push_back({ agent, entry.path(), entryError ? 0 : size });
    }
}

} // namespace

AgentLogSearch findAgentLogs(const AgentLogLocations& locations, std::optional<Agent> agent)
{
    AgentLogSearch search;
    std::set<fs::path> folders;
    std::set<fs::path> seen;
    auto searchFolder = [&](Agent owner, const fs::path& folder) {
        if (!folders.insert(identity(folder)).second)
            return;
        search.searchedFolders.push_back(folder);
        auto first = search.files.size();
        collect(owner, folder, seen, search.files);
        std::sort(search.files.begin() + static_cast<std::ptrdiff_t>(first), search.files.end(),
            [](const AgentLogFile& a, const AgentLogFile& b) { return a.path < b.path; });
    };
    if (!agent || *agent == Agent::claude) {
        for (const auto& folder : locations.claudeProjectFolders)
            searchFolder(Agent::claude, folder);
    }
    if (!agent || *agent == Agent::codex)
        searchFolder(Agent::codex, locations.codexSessionFolder);
    return search;
}

} // namespace quillmar
