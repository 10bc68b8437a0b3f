#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/appcast/Appcast.h"
#include "core/versions/AppVersion.h"

// An appcast comes from anywhere: any bytes must give items or none, never a crash or a hang; every item
// is non-blank, there are never more than 4,000, and choosing an update among them is total. The
// comparison the choice uses must also agree with itself in both directions.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    auto items = quillmar::Appcast::parse(bytes);
    if (items) {
        if (items->size() > 4000)
            __builtin_trap();
        for (const auto& item : *items) {
            if (item.isBlank())
                __builtin_trap();
            auto forward = quillmar::AppVersion::compare(item.version.value_or(""), item.shortVersion.value_or(""));
            auto backward = quillmar::AppVersion::compare(item.shortVersion.value_or(""), item.version.value_or(""));
            if ((forward < 0) != (backward > 0) || (forward == 0) != (backward == 0))
                __builtin_trap();
        }
        auto best = quillmar::Appcast::bestUpdate(*items, "1", "1.0", { 14, 4, 1 }, "arm64");
        if (best && !best->hasDownload())
            __builtin_trap();
    }
    // The same bytes as two versions.
    auto half = bytes.substr(0, size / 2);
    auto rest = bytes.substr(size / 2);
    auto forward = quillmar::AppVersion::compare(half, rest);
    auto backward = quillmar::AppVersion::compare(rest, half);
    if ((forward < 0) != (backward > 0) || quillmar::AppVersion::compare(half, half) != 0)
        __builtin_trap();
    return 0;
}
