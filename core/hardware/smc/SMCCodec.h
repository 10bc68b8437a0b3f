#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quillmar {

// Values of the SMC's data types, from and to their bytes. Types are four-character strings, spaces
// included ("flt ", "ui8 ", "fpe2", "sp78"). Pure functions; bad input gives none, never a throw.
//
//   "flt "          little-endian IEEE float (4 bytes)
//   "ioft"          little-endian unsigned 64-bit fixed point with 16 fraction bits (decode only)
//   "ui8 " "flag"   one unsigned byte
//   "ui16" "ui32"   big-endian unsigned
//   "si8 " "si16"   signed, big-endian (decode only)
//   "fpXY" "spXY"   big-endian unsigned / signed 16-bit fixed point with X integer and Y fraction bits
//                   (hexadecimal digits); valid only when X + Y is 16 for fp and 15 for sp
struct SMCCodec {
    // The value of `bytes` read as `type`; none for an empty input, too few bytes, an unknown type or a
    // non-finite float.
    static std::optional<double> decode(std::span<const std::uint8_t> bytes, std::string_view type);

    // The `size` bytes that hold `value` as `type`; none for a non-finite value, a value out of the type's
    // range (after rounding to the type's step), a size other than the type's, or a type that is not written.
    static std::optional<std::vector<std::uint8_t>> encode(double value, std::string_view type, std::size_t size);

    // The byte count of `type`'s values (4 for "flt ", 2 for "fpe2"); none for an unknown type.
    static std::optional<std::size_t> size(std::string_view type);

    // The largest value `type` can hold; none for a type that is not written, or "flt " with a size other than 4.
    static std::optional<double> maximum(std::string_view type, std::size_t size);
};

} // namespace quillmar
