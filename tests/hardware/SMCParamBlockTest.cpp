#include <gtest/gtest.h>

#include "core/hardware/smc/FourCC.h"
#include "core/hardware/smc/SMCParamBlock.h"

namespace quillmar {
namespace {

TEST(FourCC, PacksTheFirstCharacterIntoTheHighByteAndBack)
{
    EXPECT_EQ(FourCC::code("FNum"), 0x464E756Du);
    EXPECT_EQ(FourCC::string(0x464E756Du), "FNum");
    EXPECT_EQ(FourCC::string(*FourCC::code("flt ")), "flt ");
    EXPECT_EQ(FourCC::code(std::string_view("\xff\x80\x01\x00", 4)), 0xFF800100u);
    EXPECT_FALSE(FourCC::code("FNu"));
    EXPECT_FALSE(FourCC::code("FNumX"));
}

TEST(SMCParamBlock, EncodesEveryFieldLittleEndianAtItsOffset)
{
    SMCParamBlock block;
    block.key = *FourCC::code("F0Tg");
    block.dataSize = 0x04030201;
    block.dataType = *FourCC::code("flt ");
    block.dataAttributes = 0xA5;
    block.result = 0x84;
    block.status = 0x11;
    block.command = SMCParamBlock::writeKey;
    block.data32 = 0xDDCCBBAA;
    for (std::size_t index = 0; index < block.bytes.size(); ++index)
        block.bytes[index] = static_cast<std::uint8_t>(index + 1);

    auto raw = block.encode();
    ASSERT_EQ(raw.size(), 80u);
    // The key's last character comes first: the field is a little-endian 32-bit number.
    EXPECT_EQ((std::vector<std::uint8_t>(raw.begin(), raw.begin() + 4)), (std::vector<std::uint8_t> { 'g', 'T', '0', 'F' }));
    for (std::size_t index = 4; index < 28; ++index)
        EXPECT_EQ(raw[index], 0) << "version, padding and power limits are zero, byte " << index;
    EXPECT_EQ((std::vector<std::uint8_t>(raw.begin() + 28, raw.begin() + 32)), (std::vector<std::uint8_t> { 1, 2, 3, 4 }));
    EXPECT_EQ((std::vector<std::uint8_t>(raw.begin() + 32, raw.begin() + 36)), (std::vector<std::uint8_t> { ' ', 't', 'l', 'f' }));
    EXPECT_EQ(raw[36], 0xA5);
    EXPECT_EQ(raw[37], 0);
    EXPECT_EQ(raw[39], 0);
    EXPECT_EQ(raw[40], 0x84);
    EXPECT_EQ(raw[41], 0x11);
    EXPECT_EQ(raw[42], 6);
    EXPECT_EQ(raw[43], 0);
    EXPECT_EQ((std::vector<std::uint8_t>(raw.begin() + 44, raw.begin() + 48)), (std::vector<std::uint8_t> { 0xAA, 0xBB, 0xCC, 0xDD }));
    EXPECT_EQ(raw[48], 1);
    EXPECT_EQ(raw[79], 32);
}

TEST(SMCParamBlock, DecodesWhatItEncodes)
{
    SMCParamBlock block;
    block.key = *FourCC::code("#KEY");
    block.dataSize = 32;
    block.dataType = *FourCC::code("ui32");
    block.result = 1;
    block.command = SMCParamBlock::readKeyAtIndex;
    block.data32 = 1234;
    block.bytes[31] = 0xFE;
    auto back = SMCParamBlock::decode(block.encode());
    EXPECT_EQ(back.key, block.key);
    EXPECT_EQ(back.dataSize, 32u);
    EXPECT_EQ(back.dataType, block.dataType);
    EXPECT_EQ(back.result, 1);
    EXPECT_EQ(back.command, 8);
    EXPECT_EQ(back.data32, 1234u);
    EXPECT_EQ(back.bytes, block.bytes);
}

TEST(SMCParamBlock, ReadsTheResultFromByteFortyOfARawAnswer)
{
    SMCParamBlock::Bytes raw {};
    raw[28] = 2;
    raw[40] = 0x84;
    raw[48] = 0x19;
    auto block = SMCParamBlock::decode(raw);
    EXPECT_EQ(block.dataSize, 2u);
    EXPECT_EQ(block.result, 0x84);
    EXPECT_EQ(block.bytes[0], 0x19);
}

} // namespace
} // namespace quillmar
