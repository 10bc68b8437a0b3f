#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/settings/JsonFileSettingsBackend.h"

// The settings file is written by us but edited by people and other tools: any bytes must give a
// settings object or an Error, never a crash.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    auto parsed = quillmar::JsonFileSettingsBackend::parse(text);
    if (parsed && !parsed->is_object())
        __builtin_trap();
    return 0;
}
