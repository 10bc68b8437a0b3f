#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/capture/PngCodec.h"
#include "core/capture/RowSignature.h"

// Frames come from files the user names: any bytes must give a bitmap or an Error, never a crash, and a
// bitmap must be as large as it says.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    auto frame = quillmar::decodePng(bytes);
    if (!frame)
        return 0;
    if (frame->width() <= 0 || frame->height() <= 0 || frame->bytesPerRow() < frame->width() * 4)
        __builtin_trap();
    auto rows = quillmar::rowSignatures(*frame);
    if (rows.size() != static_cast<std::size_t>(frame->height()))
        __builtin_trap();
    return 0;
}
