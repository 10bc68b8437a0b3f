#include "core/hardware/smc/SMCParamBlock.h"

#include <algorithm>

namespace quillmar {

namespace {

constexpr std::size_t keyOffset = 0;
constexpr std::size_t dataSizeOffset = 28;
constexpr std::size_t dataTypeOffset = 32;
constexpr std::size_t attributesOffset = 36;
constexpr std::size_t resultOffset = 40;
constexpr std::size_t statusOffset = 41;
constexpr std::size_t commandOffset = 42;
constexpr std::size_t data32Offset = 44;
constexpr std::size_t bytesOffset = 48;

static_assert(bytesOffset + SMCParamBlock::dataCapacity == SMCParamBlock::byteCount);

void putLittleEndian(SMCParamBlock::Bytes& raw, std::size_t offset, std::uint32_t value)
{
    for (std::size_t index = 0; index < 4; ++index)
        raw[offset + index] = static_cast<std::uint8_t>(value >> (8 * index) & 0xFFu);
}

std::uint32_t getLittleEndian(const SMCParamBlock::Bytes& raw, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < 4; ++index)
        value |= static_cast<std::uint32_t>(raw[offset + index]) << (8 * index);
    return value;
}

} // namespace

SMCParamBlock::Bytes SMCParamBlock::encode() const
{
    Bytes raw {};
    putLittleEndian(raw, keyOffset, key);
    putLittleEndian(raw, dataSizeOffset, dataSize);
    putLittleEndian(raw, dataTypeOffset, dataType);
    raw[attributesOffset] = dataAttributes;
    raw[resultOffset] = result;
    raw[statusOffset] = status;
    raw[commandOffset] = command;
    putLittleEndian(raw, data32Offset, data32);
    std::copy(bytes.begin(), bytes.end(), raw.begin() + bytesOffset);
    return raw;
}

SMCParamBlock SMCParamBlock::decode(const Bytes& raw)
{
    SMCParamBlock block;
    block.key = getLittleEndian(raw, keyOffset);
    block.dataSize = getLittleEndian(raw, dataSizeOffset);
    block.dataType = getLittleEndian(raw, dataTypeOffset);
    block.dataAttributes = raw[attributesOffset];
    block.result = raw[resultOffset];
    block.status = raw[statusOffset];
    block.command = raw[commandOffset];
    block.data32 = getLittleEndian(raw, data32Offset);
    std::copy(raw.begin() + bytesOffset, raw.end(), block.bytes.begin());
    return block;
}

} // namespace quillmar
