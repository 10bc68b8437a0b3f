#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "core/hardware/smc/SMCCodec.h"

// SMC values come from the hardware as any bytes under any type: the first four bytes here are the type, the
// rest the value. Decoding must never read past the bytes nor give a non-finite number, and what decodes
// into a writable type must encode back to bytes that decode to the same value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 4)
        return 0;
    std::string_view type(reinterpret_cast<const char*>(data), 4);
    std::span<const std::uint8_t> bytes(data + 4, size - 4);
    auto value = quillmar::SMCCodec::decode(bytes, type);
    auto typeSize = quillmar::SMCCodec::size(type);
    auto maximum = quillmar::SMCCodec::maximum(type, typeSize.value_or(0));
    if (!value)
        return 0;
    if (!std::isfinite(*value))
        std::abort();
    if (!typeSize || !maximum)
        return 0;
    auto encoded = quillmar::SMCCodec::encode(*value, type, *typeSize);
    if (!encoded || quillmar::SMCCodec::decode(*encoded, type) != value)
        std::abort();
    return 0;
}
