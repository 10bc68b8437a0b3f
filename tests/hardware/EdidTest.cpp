#include <gtest/gtest.h>

#include "core/hardware/ddc/Edid.h"
#include "tests/hardware/EdidTestData.h"

namespace quillmar {
namespace {

TEST(Edid, ReadsManufacturerProductSerialAndDescriptors)
{
    auto edid = Edid::parse(makeEdid("DELL U2720Q", "8KCXW13"));
    ASSERT_TRUE(edid);
    EXPECT_EQ(edid->manufacturer, "DEL");
    EXPECT_EQ(edid->productCode, 0xA0B1);
    EXPECT_EQ(edid->serial, 0x01020304u);
    EXPECT_EQ(edid->productName, "DELL U2720Q");
    EXPECT_EQ(edid->serialText, "8KCXW13");
    EXPECT_EQ(edid->displayName(), "DELL U2720Q");
    EXPECT_EQ(edid->serialNumber(), "8KCXW13");
    EXPECT_EQ(edid->identity, "10acb1a0040302010c1e");
}

TEST(Edid, FallsBackToManufacturerAndNumbersWithoutDescriptors)
{
    auto edid = Edid::parse(makeEdid(""));
    ASSERT_TRUE(edid);
    EXPECT_EQ(edid->displayName(), "DEL a0b1");
    EXPECT_EQ(edid->serialNumber(), "16909060");
}

TEST(Edid, ANameFillingTheWholeDescriptorIsKeptWhole)
{
    EXPECT_EQ(Edid::parse(makeEdid("ABCDEFGHIJKLM")).value().productName, "ABCDEFGHIJKLM");
}

TEST(Edid, RefusesBytesWithoutTheHeaderOrShorterThanABlock)
{
    auto bytes = makeEdid("X");
    EXPECT_FALSE(Edid::parse(std::span(bytes).first(127)));
    bytes[0] = 0x01;
    EXPECT_FALSE(Edid::parse(bytes));
    EXPECT_FALSE(Edid::parse({}));
}

TEST(Edid, AWrongChecksumIsTolerated)
{
    auto bytes = makeEdid("DELL U2720Q");
    bytes[127] ^= 0xFF;
    EXPECT_TRUE(Edid::parse(bytes));
}

} // namespace
} // namespace quillmar
