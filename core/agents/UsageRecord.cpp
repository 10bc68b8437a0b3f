#include "core/agents/UsageRecord.h"

namespace quillmar {

std::string_view rawValue(Agent agent)
{
    switch (agent) {
    case Agent::claude:
        return "claude";
    case Agent::codex:
        return "codex";
    }
    return "claude";
}

} // namespace quillmar
