#include <memory>

#include <gtest/gtest.h>

#include "core/hardware/smc/FourCC.h"
#include "core/hardware/smc/SMCConnection.h"
#include "tests/hardware/SimulatedSMC.h"

namespace quillmar {
namespace {

class SMCConnectionTest : public testing::Test {
protected:
    SMCConnectionTest()
    {
        auto driver = std::make_unique<SimulatedSMC>();
        smc = driver.get();
        smc->setValue("FNum", "ui8 ", 1, 2);
        smc->setValue("F0Tg", "flt ", 4, 1800);
        connection = std::move(SMCConnection::open(std::move(driver))).value();
    }

    SimulatedSMC* smc = nullptr;
    std::unique_ptr<SMCConnection> connection;
};

TEST_F(SMCConnectionTest, OpenPassesTheDriversSentenceOn)
{
    auto driver = std::make_unique<SimulatedSMC>();
    driver->failOpen = true;
    auto opened = SMCConnection::open(std::move(driver));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().message, "The SMC can't be opened.");
}

TEST_F(SMCConnectionTest, EveryCallIsTheStructMethodWithSelectorTwo)
{
    (void)connection->readValue("FNum");
    ASSERT_FALSE(smc->selectors.empty());
    for (auto selector : smc->selectors)
        EXPECT_EQ(selector, 2u);
}

TEST_F(SMCConnectionTest, InfoAsksOnceThenAnswersFromTheCache)
{
    auto first = connection->info("F0Tg");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->size, 4u);
    EXPECT_EQ(FourCC::string(first->type), "flt ");
    EXPECT_EQ(smc->requests.back().command, SMCParamBlock::getKeyInfo);
    EXPECT_EQ(smc->requests.back().key, *FourCC::code("F0Tg"));

    EXPECT_EQ(connection->info("F0Tg"), first);
    EXPECT_EQ(smc->commandCount(SMCParamBlock::getKeyInfo), 1);
}

TEST_F(SMCConnectionTest, AMissingKeyIsRememberedAndNotAskedForAgain)
{
    EXPECT_FALSE(connection->info("F7Tg"));
    // It does not come back even when the SMC learns it later: the set lives as long as the connection.
    smc->setValue("F7Tg", "flt ", 4, 1);
    EXPECT_FALSE(connection->info("F7Tg"));
    EXPECT_EQ(smc->commandCount(SMCParamBlock::getKeyInfo), 1);
}

TEST_F(SMCConnectionTest, InfoRejectsSizesOutsideOneToThirtyTwo)
{
    smc->setKey("ZERO", "ui8 ", {});
    smc->setKey("HUGE", "ch8*", std::vector<std::uint8_t>(33, 0x41));
    smc->setKey("FULL", "ch8*", std::vector<std::uint8_t>(32, 0x41));
    EXPECT_FALSE(connection->info("ZERO"));
    EXPECT_FALSE(connection->info("HUGE"));
    EXPECT_EQ(connection->info("FULL").value().size, 32u);
}

TEST_F(SMCConnectionTest, KeysThatAreNotFourCharactersAreMissingWithoutACall)
{
    EXPECT_FALSE(connection->info("FNu"));
    EXPECT_FALSE(connection->info("F10Tg"));
    EXPECT_TRUE(smc->requests.empty());
}

TEST_F(SMCConnectionTest, ReadSendsKeySizeAndCommandFiveAndReturnsTheFirstSizeBytes)
{
    auto info = connection->info("F0Tg").value();
    auto bytes = connection->readBytes("F0Tg", info);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*bytes, (std::vector<std::uint8_t> { 0x00, 0x00, 0xE1, 0x44 }));
    const auto& request = smc->requests.back();
    EXPECT_EQ(request.command, SMCParamBlock::readKey);
    EXPECT_EQ(request.dataSize, 4u);
}

TEST_F(SMCConnectionTest, AFailedCallOrANonZeroResultReadsAsNone)
{
    auto info = connection->info("F0Tg").value();
    smc->driverStatus = 0x2c2; // the kernel's "not permitted"
    EXPECT_FALSE(connection->readBytes("F0Tg", info));
    smc->driverStatus = 0;
    smc->removeKey("F0Tg");
    EXPECT_FALSE(connection->readBytes("F0Tg", info));
}

TEST_F(SMCConnectionTest, WriteSendsKeySizeTypeAndCommandSixWithZeroPaddedData)
{
    auto info = connection->info("F0Tg").value();
    std::vector<std::uint8_t> bytes { 0x00, 0x00, 0x61, 0x45 };
    ASSERT_TRUE(connection->writeBytes("F0Tg", info, bytes));
    const auto& request = smc->requests.back();
    EXPECT_EQ(request.command, SMCParamBlock::writeKey);
    EXPECT_EQ(request.dataSize, 4u);
    EXPECT_EQ(FourCC::string(request.dataType), "flt ");
    EXPECT_EQ(request.bytes[3], 0x45);
    for (std::size_t index = 4; index < 32; ++index)
        EXPECT_EQ(request.bytes[index], 0) << index;
    EXPECT_EQ(smc->value("F0Tg"), 3600.0);
}

TEST_F(SMCConnectionTest, WriteRefusesAByteCountOtherThanTheKeysSizeWithoutACall)
{
    auto info = connection->info("F0Tg").value();
    auto calls = smc->requests.size();
    std::vector<std::uint8_t> tooShort { 0x00, 0x00, 0x61 };
    EXPECT_FALSE(connection->writeBytes("F0Tg", info, tooShort));
    EXPECT_EQ(smc->requests.size(), calls);
}

TEST_F(SMCConnectionTest, WriteFailsOnARefusal)
{
    smc->setWriteRule([](const std::string&, const std::vector<std::uint8_t>&) { return std::nullopt; });
    EXPECT_FALSE(connection->writeValue("F0Tg", 2000));
    EXPECT_EQ(smc->value("F0Tg"), 1800.0);
}

TEST_F(SMCConnectionTest, ValuesAreDecodedAndEncodedByTheKeysType)
{
    EXPECT_EQ(connection->readValue("FNum"), 2.0);
    EXPECT_TRUE(connection->writeValue("F0Tg", 2400.5));
    EXPECT_EQ(smc->value("F0Tg"), 2400.5);
    // 300 does not fit a byte.
    EXPECT_FALSE(connection->writeValue("FNum", 300));
    EXPECT_FALSE(connection->readValue("NONE"));
}

TEST_F(SMCConnectionTest, KeysWalksTheTableByIndexAndFilters)
{
    smc->setValue("TC0P", "sp78", 2, 50);
    smc->setValue("TG0P", "sp78", 2, 45);
    auto temperatures = connection->keys([](std::string_view key) { return key.starts_with("T"); });
    EXPECT_EQ(temperatures, (std::vector<std::string> { "TC0P", "TG0P" }));
    auto all = connection->keys([](std::string_view) { return true; });
    EXPECT_EQ(all, (std::vector<std::string> { "#KEY", "F0Tg", "FNum", "TC0P", "TG0P" }));
    EXPECT_EQ(smc->requests.back().command, SMCParamBlock::readKeyAtIndex);
    EXPECT_EQ(smc->requests.back().data32, 4u);
}

TEST_F(SMCConnectionTest, KeysIsEmptyWithoutAKeyCount)
{
    smc->removeKey("#KEY");
    EXPECT_TRUE(connection->keys([](std::string_view) { return true; }).empty());
}

} // namespace
} // namespace quillmar
