#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/apps/PropertyList.h"

// An application's Info.plist is any bytes the application's author chose, XML or binary.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto value = quillmar::parsePropertyList(std::string_view(reinterpret_cast<const char*>(data), size));
    if (value && value->dictionary())
        (void)value->dictionary()->size();
    return 0;
}
