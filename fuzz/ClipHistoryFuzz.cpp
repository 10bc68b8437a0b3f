#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/clipboard/ClipHistoryFile.h"

// "history.json" is ours, but a disk, a sync tool or a person may have changed it: any bytes must give a
// history or an Error, never a crash; an image file name must never be a path (the store deletes files by
// it); and what was read must be written back and read again unchanged.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto decoded = quillmar::ClipHistoryFile::decode(text);
    if (!decoded)
        return 0;
    for (const auto& item : decoded->items) {
        if (item.imageFile && !quillmar::isPlainFileName(*item.imageFile))
            __builtin_trap();
    }
    auto again = quillmar::ClipHistoryFile::decode(quillmar::ClipHistoryFile::encode(decoded->items));
    if (!again || again->dropped != 0 || again->items != decoded->items)
        __builtin_trap();
    return 0;
}
