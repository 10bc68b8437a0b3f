#include <cstddef>
#include <cstdint>
#include <string>

#include "core/agents/ClaudeLineParser.h"

// A line of a Claude Code session log is whatever is on the user's disk: any bytes must give a record
// within the bounds the totals rely on, or no record, never a crash or a read past the line's padding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static quillmar::ClaudeLineParser parser;
    std::string storage(reinterpret_cast<const char*>(data), size);
    storage.append(quillmar::logLinePadding, '\0');
    quillmar::ClaudeEntry entry;
    if (!parser.parse({ std::string_view(storage.data(), size), storage.size() }, entry))
        return 0;
    const auto& record = entry.record;
    for (auto count : { record.input, record.output, record.cacheRead, record.cacheWrite, record.cacheWrite1h, record.webSearches }) {
        if (count < 0 || count > quillmar::maxLoggedTokens)
            __builtin_trap();
    }
    if (record.model == "<synthetic>" || record.agent != quillmar::Agent::claude)
        __builtin_trap();
    return 0;
}
