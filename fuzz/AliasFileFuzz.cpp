#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/uninstaller/AliasFile.h"

// A dropped item's first bytes come from anywhere: any bytes must give an answer, never a crash or a read
// past the end; whatever follows the bookmark magic does not change that it is an alias.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    bool alias = quillmar::AliasFile::isAliasData(bytes);
    if (bytes.starts_with(quillmar::AliasFile::bookmarkMagic) && !alias)
        __builtin_trap();
    return 0;
}
