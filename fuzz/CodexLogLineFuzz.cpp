#include <cstddef>
#include <cstdint>
#include <string>

#include "core/agents/CodexLineParser.h"

// A line of a Codex session log is whatever is on the user's disk: any bytes must give an entry with
// counts inside the bounds the reader's arithmetic relies on, or none, never a crash.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static quillmar::CodexLineParser parser;
    std::string storage(reinterpret_cast<const char*>(data), size);
    storage.append(quillmar::logLinePadding, '\0');
    quillmar::CodexEntry entry;
    if (!parser.parse({ std::string_view(storage.data(), size), storage.size() }, entry))
        return 0;
    if (entry.kind == quillmar::CodexEntry::Kind::tokenCount) {
        const auto& totals = entry.totals;
        for (auto count : { totals.input, totals.cachedInput, totals.output, totals.reasoningOutput }) {
            if (count < 0 || count > quillmar::maxLoggedTokens)
                __builtin_trap();
        }
        if (totals.total < 0 || totals.total > 2 * quillmar::maxLoggedTokens)
            __builtin_trap();
    }
    return 0;
}
