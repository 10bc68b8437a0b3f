#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

#include "core/snippets/SnippetLibrary.h"

// An imported snippet library comes from anywhere: any bytes must give a library or one of the import
// errors, never a crash; a library has snippets with distinct ids, and exporting it and importing the
// export gives it back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto decoded = quillmar::SnippetLibrary::decode(text);
    if (!decoded) {
        auto kind = quillmar::SnippetLibrary::importError(decoded.error());
        if (decoded.error().message != quillmar::SnippetLibrary::message(kind))
            __builtin_trap();
        return 0;
    }
    if (decoded->snippets.empty())
        __builtin_trap();
    std::set<std::string> ids;
    for (const auto& snippet : decoded->snippets) {
        if (snippet.id.empty() || !ids.insert(snippet.id).second)
            __builtin_trap();
    }
    auto again = quillmar::SnippetLibrary::decode(quillmar::SnippetLibrary::encode(*decoded));
    if (!again || *again != *decoded)
        __builtin_trap();
    return 0;
}
