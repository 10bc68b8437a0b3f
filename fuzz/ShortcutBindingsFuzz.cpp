#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/hotkeys/ShortcutStore.h"

// Saved shortcut bindings come back from the settings file: any JSON must decode without throwing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto json = nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded())
        return 0;
    auto decoded = quillmar::ShortcutStore::decodeSaved(json);
    (void)decoded;
    return 0;
}
