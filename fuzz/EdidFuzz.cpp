#include <cstddef>
#include <cstdint>
#include <span>

#include "core/hardware/ddc/Edid.h"

// A monitor's EDID is read from the display bus or the kernel as any bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto edid = quillmar::Edid::parse(std::span(data, size));
    if (edid) {
        (void)edid->displayName();
        (void)edid->serialNumber();
    }
    return 0;
}
