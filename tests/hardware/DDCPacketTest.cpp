#include <vector>

#include <gtest/gtest.h>

#include "core/hardware/ddc/DDCPacket.h"
#include "tests/hardware/FakeI2CBus.h"

namespace quillmar {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(DDCPacket, GetBrightnessRequestEndsWithChecksumAC)
{
    EXPECT_EQ(DDCPacket::getRequest(0x10), (Bytes { 0x82, 0x01, 0x10, 0xAC }));
}

TEST(DDCPacket, SetBrightnessToFiftyCarriesTheValueBigEndian)
{
    std::uint8_t checksum = 0x6E ^ 0x51 ^ 0x84 ^ 0x03 ^ 0x10 ^ 0x00 ^ 0x32;
    EXPECT_EQ(DDCPacket::setRequest(0x10, 50), (Bytes { 0x84, 0x03, 0x10, 0x00, 0x32, checksum }));
    EXPECT_EQ(DDCPacket::setRequest(0x62, 0x1234), (Bytes { 0x84, 0x03, 0x62, 0x12, 0x34, 0x3F ^ 0x84 ^ 0x03 ^ 0x62 ^ 0x12 ^ 0x34 }));
}

TEST(DDCPacket, PacketPrefixesTheLengthAndXorsEverythingIntoTheChecksum)
{
    EXPECT_EQ(DDCPacket::packet(Bytes {}), (Bytes { 0x80, 0x3F ^ 0x80 }));
    Bytes payload { 0xF3, 0x00, 0x01 };
    auto bytes = DDCPacket::packet(payload);
    ASSERT_EQ(bytes.size(), 5u);
    std::uint8_t all = 0x6E ^ 0x51;
    for (auto byte : bytes)
        all ^= byte;
    EXPECT_EQ(all, 0) << "the checksum makes the whole packet XOR to the seed";
    EXPECT_EQ(DDCPacket::packet(Bytes(200, 0x01)).size(), 127u + 2);
}

struct ParseRow {
    const char* name;
    Bytes reply;
    std::uint8_t expecting;
    DDCReadOutcome expected;
};

class DDCPacketParse : public testing::TestWithParam<ParseRow> { };

TEST_P(DDCPacketParse, Reads)
{
    EXPECT_EQ(DDCPacket::parse(GetParam().reply, GetParam().expecting), GetParam().expected);
}

Bytes changed(Bytes bytes, std::size_t index, std::uint8_t value)
{
    bytes[index] = value;
    return bytes;
}

Bytes withChecksumFixed(Bytes bytes)
{
    std::uint8_t checksum = 0x50;
    for (std::size_t index = 0; index < 10; ++index)
        checksum ^= bytes[index];
    bytes[10] = checksum;
    return bytes;
}

const Bytes brightness = FakeI2CBus::reply(0x10, 50, 100);

INSTANTIATE_TEST_SUITE_P(Table, DDCPacketParse,
    testing::Values(
        ParseRow { "value", brightness, 0x10, DDCReadOutcome::value(50, 100) },
        ParseRow { "sixteenBitValues", FakeI2CBus::reply(0x12, 0x0102, 0x0A0B), 0x12, DDCReadOutcome::value(0x0102, 0x0A0B) },
        ParseRow { "zeroMaximumReadsAsHundred", FakeI2CBus::reply(0x10, 30, 0), 0x10, DDCReadOutcome::value(30, 100) },
        ParseRow { "nonZeroResultIsUnsupported", FakeI2CBus::reply(0x10, 0, 0, 0x01), 0x10, DDCReadOutcome::unsupported() },
        ParseRow { "trailingBytesAreIgnored", [] { auto bytes = brightness; bytes.push_back(0xEE); return bytes; }(), 0x10,
            DDCReadOutcome::value(50, 100) },
        ParseRow { "tenBytesIsShort", Bytes(brightness.begin(), brightness.begin() + 10), 0x10, DDCReadOutcome::failed() },
        ParseRow { "emptyFails", Bytes {}, 0x10, DDCReadOutcome::failed() },
        ParseRow { "wrongOpcode", withChecksumFixed(changed(brightness, 2, 0x03)), 0x10, DDCReadOutcome::failed() },
        ParseRow { "anotherCode", brightness, 0x12, DDCReadOutcome::failed() },
        ParseRow { "badChecksum", changed(brightness, 10, static_cast<std::uint8_t>(brightness[10] ^ 0x01)), 0x10,
            DDCReadOutcome::failed() },
        ParseRow { "corruptedValue", changed(brightness, 9, 51), 0x10, DDCReadOutcome::failed() },
        ParseRow { "badChecksumOutranksUnsupported", changed(FakeI2CBus::reply(0x10, 0, 0, 0x01), 10, 0), 0x10,
            DDCReadOutcome::failed() }),
    [](const testing::TestParamInfo<ParseRow>& row) { return std::string(row.param.name); });

} // namespace
} // namespace quillmar
