#include "core/hardware/smc/SMCCodec.h"

#include <bit>
#include <cmath>
#include <limits>

#include "core/base/Text.h"

namespace quillmar {

namespace {

enum class Kind { float32, ioFixed, unsigned8, unsigned16, unsigned32, signed8, signed16, fixedUnsigned, fixedSigned };

struct TypeShape {
    Kind kind;
    int fractionBits = 0;
};

std::optional<TypeShape> shapeOf(std::string_view type)
{
    if (type == "flt ")
        return TypeShape { Kind::float32 };
    if (type == "ioft")
        return TypeShape { Kind::ioFixed };
    if (type == "ui8 " || type == "flag")
        return TypeShape { Kind::unsigned8 };
    if (type == "ui16")
        return TypeShape { Kind::unsigned16 };
    if (type == "ui32")
        return TypeShape { Kind::unsigned32 };
    if (type == "si8 ")
        return TypeShape { Kind::signed8 };
    if (type == "si16")
        return TypeShape { Kind::signed16 };
    if (type.size() == 4 && (type.starts_with("fp") || type.starts_with("sp"))) {
        int integerBits = hexDigitValue(type[2]);
        int fractionBits = hexDigitValue(type[3]);
        if (integerBits < 0 || fractionBits < 0)
            return std::nullopt;
        bool isSigned = type[0] == 's';
        // The sign takes the sixteenth bit of an sp type.
        if (integerBits + fractionBits != (isSigned ? 15 : 16))
            return std::nullopt;
        return TypeShape { isSigned ? Kind::fixedSigned : Kind::fixedUnsigned, fractionBits };
    }
    return std::nullopt;
}

std::uint64_t bigEndian(std::span<const std::uint8_t> bytes, std::size_t count)
{
    std::uint64_t value = 0;
    for (std::size_t index = 0; index < count; ++index)
        value = value << 8 | bytes[index];
    return value;
}

std::uint64_t littleEndian(std::span<const std::uint8_t> bytes, std::size_t count)
{
    std::uint64_t value = 0;
    for (std::size_t index = count; index-- > 0;)
        value = value << 8 | bytes[index];
    return value;
}

std::vector<std::uint8_t> bigEndianBytes(std::uint64_t value, std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::size_t index = count; index-- > 0; value >>= 8)
        bytes[index] = static_cast<std::uint8_t>(value & 0xFFu);
    return bytes;
}

std::size_t sizeOf(Kind kind)
{
    switch (kind) {
    case Kind::unsigned8:
    case Kind::signed8:
        return 1;
    case Kind::unsigned16:
    case Kind::signed16:
    case Kind::fixedUnsigned:
    case Kind::fixedSigned:
        return 2;
    case Kind::float32:
    case Kind::unsigned32:
        return 4;
    case Kind::ioFixed:
        return 8;
    }
    return 0;
}

// The rounded `value` when it lies within minimum...maximum.
std::optional<double> roundedWithin(double value, double minimum, double maximum)
{
    double rounded = std::round(value);
    if (rounded < minimum || rounded > maximum)
        return std::nullopt;
    return rounded;
}

} // namespace

std::optional<double> SMCCodec::decode(std::span<const std::uint8_t> bytes, std::string_view type)
{
    auto shape = shapeOf(type);
    if (bytes.empty() || !shape || bytes.size() < sizeOf(shape->kind))
        return std::nullopt;
    switch (shape->kind) {
    case Kind::float32: {
        auto value = std::bit_cast<float>(static_cast<std::uint32_t>(littleEndian(bytes, 4)));
        if (!std::isfinite(value))
            return std::nullopt;
        return static_cast<double>(value);
    }
    case Kind::ioFixed:
        return std::ldexp(static_cast<double>(littleEndian(bytes, 8)), -16);
    case Kind::unsigned8:
        return bytes[0];
    case Kind::unsigned16:
        return static_cast<double>(bigEndian(bytes, 2));
    case Kind::unsigned32:
        return static_cast<double>(bigEndian(bytes, 4));
    case Kind::signed8:
        return static_cast<std::int8_t>(bytes[0]);
    case Kind::signed16:
        return static_cast<std::int16_t>(bigEndian(bytes, 2));
    case Kind::fixedUnsigned:
        return std::ldexp(static_cast<double>(bigEndian(bytes, 2)), -shape->fractionBits);
    case Kind::fixedSigned:
        return std::ldexp(static_cast<double>(static_cast<std::int16_t>(bigEndian(bytes, 2))), -shape->fractionBits);
    }
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> SMCCodec::encode(double value, std::string_view type, std::size_t size)
{
    auto shape = shapeOf(type);
    if (!std::isfinite(value) || !shape || size != sizeOf(shape->kind))
        return std::nullopt;
    switch (shape->kind) {
    case Kind::float32: {
        if (std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max()))
            return std::nullopt;
        auto raw = std::bit_cast<std::uint32_t>(static_cast<float>(value));
        std::vector<std::uint8_t> bytes(4);
        for (std::size_t index = 0; index < 4; ++index)
            bytes[index] = static_cast<std::uint8_t>(raw >> (8 * index) & 0xFFu);
        return bytes;
    }
    case Kind::unsigned8:
    case Kind::unsigned16:
    case Kind::unsigned32: {
        auto limit = std::ldexp(1.0, static_cast<int>(8 * size)) - 1;
        auto rounded = roundedWithin(value, 0, limit);
        if (!rounded)
            return std::nullopt;
        return bigEndianBytes(static_cast<std::uint64_t>(*rounded), size);
    }
    case Kind::fixedUnsigned: {
        auto raw = roundedWithin(std::ldexp(value, shape->fractionBits), 0, 65535);
        if (!raw)
            return std::nullopt;
        return bigEndianBytes(static_cast<std::uint64_t>(*raw), 2);
    }
    case Kind::fixedSigned: {
        auto raw = roundedWithin(std::ldexp(value, shape->fractionBits), -32768, 32767);
        if (!raw)
            return std::nullopt;
        // Two's complement of the 16-bit raw value.
        auto bits = static_cast<std::uint16_t>(static_cast<std::int16_t>(*raw));
        return bigEndianBytes(bits, 2);
    }
    case Kind::ioFixed:
    case Kind::signed8:
    case Kind::signed16:
        return std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::size_t> SMCCodec::size(std::string_view type)
{
    auto shape = shapeOf(type);
    if (!shape)
        return std::nullopt;
    return sizeOf(shape->kind);
}

std::optional<double> SMCCodec::maximum(std::string_view type, std::size_t size)
{
    auto shape = shapeOf(type);
    if (!shape)
        return std::nullopt;
    switch (shape->kind) {
    case Kind::float32:
        if (size != 4)
            return std::nullopt;
        return static_cast<double>(std::numeric_limits<float>::max());
    case Kind::unsigned8:
        return 255.0;
    case Kind::unsigned16:
        return 65535.0;
    case Kind::unsigned32:
        return 4294967295.0;
    case Kind::fixedUnsigned:
        return std::ldexp(65535.0, -shape->fractionBits);
    case Kind::fixedSigned:
        return std::ldexp(32767.0, -shape->fractionBits);
    case Kind::ioFixed:
    case Kind::signed8:
    case Kind::signed16:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace quillmar
