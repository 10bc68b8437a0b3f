#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "core/hardware/ddc/DDCEngine.h"
#include "core/runtime/VirtualRuntime.h"
#include "tests/hardware/FakeI2CBus.h"

namespace quillmar {
namespace {

using Bytes = std::vector<std::uint8_t>;

const DDCServiceID left = "/dev/i2c-4";
const DDCServiceID right = "/dev/i2c-7";

class DDCEngineTest : public testing::Test {
protected:
    // Each transmission is two identical writes; the packets the monitors were sent, once each.
    std::vector<FakeI2CBus::Write> transmissions() const
    {
        std::vector<FakeI2CBus::Write> sent;
        for (std::size_t index = 0; index < bus.writes.size(); index += 2)
            sent.push_back(bus.writes[index]);
        return sent;
    }

    std::optional<DDCReadOutcome> readBrightness(const DDCServiceID& service)
    {
        std::optional<DDCReadOutcome> outcome;
        engine.read(service, [&](DDCReadOutcome read) { outcome = read; });
        runtime.runUntilIdle();
        return outcome;
    }

    VirtualRuntime runtime;
    FakeI2CBus bus { runtime.clock() };
    DDCEngine engine { runtime, bus };
};

TEST_F(DDCEngineTest, TwoWritesOfOneCodeBeforeTheDrainSendOnePacketWithTheSecondValue)
{
    std::vector<bool> completions;
    engine.write(0x10, 30, left, [&](bool succeeded) { completions.push_back(succeeded); });
    engine.write(0x10, 70, left, [&](bool succeeded) { completions.push_back(succeeded); });
    EXPECT_EQ(engine.pendingCount(), 1u);
    runtime.runUntilIdle();

    auto sent = transmissions();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].bytes, DDCPacket::setRequest(0x10, 70));
    EXPECT_EQ(completions, (std::vector<bool> { true, true }));
    EXPECT_EQ(engine.pendingCount(), 0u);
}

TEST_F(DDCEngineTest, WritesOfOtherCodesOrDisplaysAreNotMerged)
{
    engine.write(0x10, 30, left);
    engine.write(0x12, 40, left);
    engine.write(0x10, 50, right);
    engine.write(0x10, 60, left);
    runtime.runUntilIdle();
    auto sent = transmissions();
    ASSERT_EQ(sent.size(), 3u);
    EXPECT_EQ(sent[0].bytes, DDCPacket::setRequest(0x10, 60)) << "the replaced write keeps its place";
    EXPECT_EQ(sent[1].bytes, DDCPacket::setRequest(0x12, 40));
    EXPECT_EQ(sent[2].service, right);
}

TEST_F(DDCEngineTest, EveryPacketGoesOutTwiceToTheMonitorsAddressTenMillisecondsApart)
{
    engine.write(0x10, 50, left);
    runtime.runUntilIdle();
    ASSERT_EQ(bus.writes.size(), 2u);
    for (const auto& write : bus.writes) {
        EXPECT_EQ(write.chipAddress, 0x37);
        EXPECT_EQ(write.dataAddress, 0x51);
        EXPECT_EQ(write.bytes, DDCPacket::setRequest(0x10, 50));
    }
    EXPECT_EQ(bus.writes[0].at, seconds(0.01));
    EXPECT_EQ(bus.writes[1].at, seconds(0.02));
}

TEST_F(DDCEngineTest, TransmissionsToOneDisplayAreAtLeastFiftyMillisecondsApart)
{
    for (std::uint8_t code : std::vector<std::uint8_t> { 0x10, 0x12, 0x62, 0x60 })
        engine.write(code, 10, left);
    runtime.runUntilIdle();
    ASSERT_EQ(bus.writes.size(), 8u);
    for (std::size_t index = 2; index < bus.writes.size(); index += 2) {
        auto previousEnd = bus.writes[index - 1].at;
        EXPECT_GE(bus.writes[index].at - previousEnd, seconds(0.05)) << "transmission " << index / 2;
    }
    // Pacing is per display: one that was quiet goes out after the usual 10 ms.
    engine.write(0x10, 10, right);
    auto before = runtime.uptime();
    runtime.runUntilIdle();
    EXPECT_EQ(bus.writes.back().at - before, seconds(0.02));
}

TEST_F(DDCEngineTest, PacingCountsTimeAlreadyPassed)
{
    engine.write(0x10, 10, left);
    runtime.runUntilIdle();
    auto end = bus.writes.back().at;
    runtime.advance(seconds(0.03));
    engine.write(0x10, 20, left);
    runtime.runUntilIdle();
    EXPECT_EQ(bus.writes[2].at - end, seconds(0.05) + seconds(0.01));

    runtime.advance(seconds(1));
    auto quietSince = runtime.uptime();
    engine.write(0x10, 30, left);
    runtime.runUntilIdle();
    EXPECT_EQ(bus.writes[4].at - quietSince, seconds(0.01));
}

TEST_F(DDCEngineTest, AWriteSucceedsWhenEitherCopyDoes)
{
    int calls = 0;
    bus.acceptWrite = [&](const FakeI2CBus::Write&) { return ++calls % 2 == 0; };
    std::optional<bool> first;
    engine.write(0x10, 10, left, [&](bool succeeded) { first = succeeded; });
    runtime.runUntilIdle();
    EXPECT_EQ(first, true);

    bus.acceptWrite = [](const FakeI2CBus::Write&) { return false; };
    std::optional<bool> second;
    engine.write(0x10, 20, left, [&](bool succeeded) { second = succeeded; });
    runtime.runUntilIdle();
    EXPECT_EQ(second, false);
}

TEST_F(DDCEngineTest, AWriteQueuedFromACompletionGoesOutInTheSameDrain)
{
    engine.write(0x10, 10, left, [&](bool) { engine.write(0x10, 20, left); });
    runtime.runUntilIdle();
    auto sent = transmissions();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[1].bytes, DDCPacket::setRequest(0x10, 20));
}

TEST_F(DDCEngineTest, NothingGoesOutBeforeTheQueueRuns)
{
    engine.write(0x10, 10, left);
    EXPECT_TRUE(bus.writes.empty());
    EXPECT_EQ(runtime.pendingCount(), 1u);
}

TEST_F(DDCEngineTest, ReadSendsTheGetRequestAndReadsTheReplyFiftyMillisecondsLater)
{
    bus.replies[left].push_back(FakeI2CBus::reply(0x10, 42, 100));
    EXPECT_EQ(readBrightness(left), DDCReadOutcome::value(42, 100));
    ASSERT_EQ(bus.writes.size(), 2u);
    EXPECT_EQ(bus.writes[0].bytes, DDCPacket::getRequest(0x10));
    ASSERT_EQ(bus.reads.size(), 1u);
    EXPECT_EQ(bus.reads[0].chipAddress, 0x37);
    EXPECT_EQ(bus.reads[0].at - bus.writes[1].at, seconds(0.05));
}

TEST_F(DDCEngineTest, ReadRetriesAfterAnInvalidReply)
{
    auto corrupted = FakeI2CBus::reply(0x10, 42, 100);
    corrupted[10] ^= 0xFF;
    bus.replies[left] = { corrupted, FakeI2CBus::reply(0x10, 43, 100) };
    EXPECT_EQ(readBrightness(left), DDCReadOutcome::value(43, 100));
    ASSERT_EQ(bus.reads.size(), 2u);
    // The retry waits 20 ms, then sends the request again under the 50 ms pacing.
    EXPECT_GE(transmissions()[1].at - bus.reads[0].at, seconds(0.02));
}

TEST_F(DDCEngineTest, AnUnsupportedAnswerIsNotRetried)
{
    bus.replies[left] = { FakeI2CBus::reply(0x10, 0, 0, 0x01), FakeI2CBus::reply(0x10, 43, 100) };
    EXPECT_EQ(readBrightness(left), DDCReadOutcome::unsupported());
    EXPECT_EQ(bus.reads.size(), 1u);
}

TEST_F(DDCEngineTest, ReadFailsAfterItsAttempts)
{
    EXPECT_EQ(readBrightness(left), DDCReadOutcome::failed());
    EXPECT_EQ(bus.reads.size(), static_cast<std::size_t>(DDCEngine::readAttempts));
    EXPECT_EQ(transmissions().size(), static_cast<std::size_t>(DDCEngine::readAttempts));
}

TEST_F(DDCEngineTest, ReadOfAnotherCodeExpectsThatCodeInTheReply)
{
    bus.replies[left] = { FakeI2CBus::reply(0x10, 42, 100), FakeI2CBus::reply(0x62, 7, 100) };
    std::optional<DDCReadOutcome> outcome;
    engine.read(left, [&](DDCReadOutcome read) { outcome = read; }, 0x62);
    runtime.runUntilIdle();
    EXPECT_EQ(outcome, DDCReadOutcome::value(7, 100));
    EXPECT_EQ(bus.writes[0].bytes, DDCPacket::getRequest(0x62));
}

TEST_F(DDCEngineTest, DiscoverPassesTheTransportsAnswerOn)
{
    bus.displays = { DDCDisplay { left, ServiceIdentity { "DELL U2720Q", "ABC123", "10ac", "External" } } };
    auto displays = engine.discover();
    ASSERT_TRUE(displays);
    EXPECT_EQ(*displays, bus.displays);
}

} // namespace
} // namespace quillmar
