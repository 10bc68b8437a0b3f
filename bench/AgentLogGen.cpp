// Writes realistic coding-agent logs for measuring `quillmar agents report`:
//   bench_agents_loggen FOLDER MEGABYTES [SEED [--without-copies]]
// FOLDER becomes a home folder (FOLDER/.claude/projects, FOLDER/.codex/sessions); run the report with
// HOME=FOLDER. Prints what was written as one JSON object, to check the report's totals against. With
// --without-copies, resumed conversations and forks leave out the copy of their earlier history: the same
// seed then writes the same turns, and the report must total alike.

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "bench/AgentLogGenerator.h"

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "usage: bench_agents_loggen FOLDER MEGABYTES [SEED [--without-copies]]\n";
        return 2;
    }
    auto megabytes = std::strtoull(argv[2], nullptr, 10);
    auto seed = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
    auto copies = argc > 4 && std::string_view(argv[4]) == "--without-copies" ? quillmar::GeneratedCopies::leftOut
                                                                              : quillmar::GeneratedCopies::written;
    auto usage = quillmar::generateAgentLogs(argv[1], megabytes << 20, seed, copies);
    nlohmann::json summary = {
        { "files", usage.files },
        { "bytes", usage.bytes },
        { "claudeTurns", usage.claudeTurns },
        { "codexTurns", usage.codexTurns },
        { "input", usage.input },
        { "output", usage.output },
        { "cacheRead", usage.cacheRead },
        { "cacheWrite", usage.cacheWrite },
        { "cacheWrite1h", usage.cacheWrite1h },
        { "cost", usage.cost },
    };
    std::cout << summary.dump() << '\n';
    return 0;
}
