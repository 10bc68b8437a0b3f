#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "core/hardware/helper/FanController.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "tests/hardware/FakeFanHelperPorts.h"

namespace quillmar {
namespace {

using Kind = FanHelperRequest::Kind;

class FakeSensors final : public TemperatureSensors {
public:
    std::vector<TemperatureReading> read() override { return readings; }
    std::vector<TemperatureReading> readings;
};

// A helper that grants every apply and restore, as the real one does for its only client.
std::optional<FanHelperResponse> grant(const FanHelperRequest& request)
{
    switch (request.kind) {
    case Kind::apply:
        return FanHelperResponse { true, request.level, "" };
    case Kind::restore:
        return FanHelperResponse { false, std::nullopt, "" };
    case Kind::heartbeat:
    case Kind::status:
        break;
    }
    return FanHelperResponse { true, 50, "" };
}

class FanControllerTest : public testing::Test {
protected:
    FanControllerTest()
    {
        settings.set("monitor.fan.helperVersion", "2");
        client.respond = grant;
        controller = std::make_unique<FanController>(runtime, settings, client, sensors);
    }

    void enable()
    {
        controller->setEnabled(true);
        runtime.runUntilIdle();
    }

    void useCurve(double celsius)
    {
        sensors.readings = { { "p-core 1", SensorGroup::cpu, celsius } };
        settings.set("monitor.fan.mode", "curve");
        runtime.runUntilIdle();
    }

    // The level of the last apply sent (heartbeats go out in between).
    std::optional<int> lastApplied() const
    {
        for (auto request = client.sent.rbegin(); request != client.sent.rend(); ++request) {
            if (request->kind == Kind::apply)
                return request->level;
        }
        return std::nullopt;
    }

    int count(Kind kind) const
    {
        auto kinds = client.kinds();
        return static_cast<int>(std::count(kinds.begin(), kinds.end(), kind));
    }

    VirtualRuntime runtime;
    Settings settings { std::make_unique<MemorySettingsBackend>() };
    FakeFanHelperClient client;
    FakeSensors sensors;
    std::unique_ptr<FanController> controller;
};

TEST_F(FanControllerTest, EnablingAppliesTheManualLevel)
{
    settings.set("monitor.fan.level", 70);
    enable();
    ASSERT_EQ(client.sent.size(), 1u);
    EXPECT_EQ(client.sent[0], FanHelperRequest::apply(70));
    EXPECT_TRUE(controller->isController());
    EXPECT_EQ(controller->level(), 70);
    EXPECT_EQ(controller->message(), "");
}

TEST_F(FanControllerTest, AHelperOfAnotherVersionIsRegisteredAgainFirst)
{
    client.version = "3";
    enable();
    EXPECT_EQ(client.registrations, 1);
    EXPECT_EQ(settings.string("monitor.fan.helperVersion"), "3");
    EXPECT_EQ(client.kinds(), std::vector { Kind::apply });

    controller->setEnabled(false);
    enable();
    EXPECT_EQ(client.registrations, 1) << "the same version is not registered twice";
}

TEST_F(FanControllerTest, AFailedRegistrationShowsItsSentenceAndSendsNothing)
{
    client.version = "3";
    client.registrationError = Error { "fans.unsigned", "Changing fan speeds takes a small helper.", {} };
    enable();
    EXPECT_EQ(controller->message(), "Changing fan speeds takes a small helper.");
    EXPECT_TRUE(client.sent.empty());
    EXPECT_EQ(settings.string("monitor.fan.helperVersion"), "2");
}

TEST_F(FanControllerTest, HeartbeatsGoOutEverySecondWhileControlling)
{
    enable();
    runtime.advance(seconds(0.99));
    EXPECT_EQ(count(Kind::heartbeat), 0);
    runtime.advance(seconds(0.01));
    EXPECT_EQ(count(Kind::heartbeat), 1);
    runtime.advance(seconds(4.0));
    EXPECT_EQ(count(Kind::heartbeat), 5);
}

TEST_F(FanControllerTest, NoHeartbeatsWithoutControl)
{
    client.respond = [](const FanHelperRequest&) {
        return std::optional(FanHelperResponse { false, 50, "Another session is controlling the fans" });
    };
    enable();
    runtime.advance(seconds(5.0));
    EXPECT_EQ(count(Kind::heartbeat), 0);
    EXPECT_EQ(controller->message(), "Another session is controlling the fans");
    EXPECT_FALSE(controller->isController());
}

TEST_F(FanControllerTest, TurningOffOrQuittingRestoresAndStopsTheHeartbeats)
{
    const std::function<void(FanController&)> stops[] = { [](FanController& fans) { fans.setEnabled(false); },
        &FanController::shutdown };
    for (const auto& stop : stops) {
        client.sent.clear();
        enable();
        stop(*controller);
        runtime.advance(seconds(5.0));
        EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::restore }));
        EXPECT_FALSE(controller->isController());
        EXPECT_FALSE(controller->level());
    }
}

TEST_F(FanControllerTest, SleepRestoresAndWakeAppliesAgainWhenAskedTo)
{
    enable();
    controller->systemWillSleep();
    runtime.advance(seconds(30));
    EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::restore }));
    controller->systemDidWake();
    runtime.runUntilIdle();
    EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::restore, Kind::apply }));
    EXPECT_TRUE(controller->isController());
}

TEST_F(FanControllerTest, WakeLeavesTheFansAutomaticWhenResumeIsOff)
{
    settings.set("monitor.fan.resumeAfterWake", false);
    enable();
    controller->systemWillSleep();
    controller->systemDidWake();
    runtime.advance(seconds(5));
    EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::restore }));
}

TEST_F(FanControllerTest, ChangingTheLevelAppliesIt)
{
    enable();
    settings.set("monitor.fan.level", 85);
    runtime.runUntilIdle();
    EXPECT_EQ(lastApplied(), 85);
    EXPECT_EQ(controller->level(), 85);
}

TEST_F(FanControllerTest, CurveModeAppliesTheCurvesLevelAndSamplesEveryTwoSeconds)
{
    enable();
    useCurve(61);
    EXPECT_EQ(lastApplied(), 65);

    // Same temperature: nothing new to send.
    runtime.advance(FanController::curveSampleInterval);
    EXPECT_EQ(count(Kind::apply), 2);

    sensors.readings[0].celsius = 80;
    runtime.advance(FanController::curveSampleInterval - seconds(0.01));
    EXPECT_EQ(count(Kind::apply), 2);
    runtime.advance(seconds(0.01));
    EXPECT_EQ(count(Kind::apply), 3);
    EXPECT_EQ(lastApplied(), 100);
}

TEST_F(FanControllerTest, AnUnreadableCurveTemperatureHandsTheFansBackUntilItReadsAgain)
{
    enable();
    sensors.readings.clear();
    settings.set("monitor.fan.mode", "curve");
    runtime.runUntilIdle();
    EXPECT_EQ(controller->message(), "The curve's temperature can't be read on this Mac");
    EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::restore }));
    EXPECT_FALSE(controller->isController());

    // No heartbeats and no applies while the temperature stays unreadable.
    runtime.advance(FanController::curveSampleInterval * 3);
    EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::restore }));
    EXPECT_EQ(controller->message(), "The curve's temperature can't be read on this Mac");

    sensors.readings = { { "p-core 1", SensorGroup::cpu, 61 } };
    runtime.advance(FanController::curveSampleInterval);
    EXPECT_EQ(lastApplied(), 65);
    EXPECT_TRUE(controller->isController());
    EXPECT_EQ(controller->message(), "");
}

TEST_F(FanControllerTest, ControlDroppedByTheHelperIsShownAndTakenAgainOnlyOnTheNextChange)
{
    settings.set("monitor.fan.level", 70);
    enable();
    // The helper's heartbeat time-out ran out (the app was stuck): it answers that it holds nothing.
    client.respond = [](const FanHelperRequest& request) {
        if (request.kind == Kind::heartbeat)
            return std::optional(FanHelperResponse { false, std::nullopt, "" });
        return grant(request);
    };
    runtime.advance(FanController::heartbeatInterval);
    EXPECT_TRUE(controller->controlDropped());
    EXPECT_FALSE(controller->isController());
    EXPECT_EQ(controller->message(), FanController::droppedMessage);

    runtime.advance(seconds(30));
    EXPECT_EQ(client.kinds(), (std::vector { Kind::apply, Kind::heartbeat })) << "nothing is taken back unasked";

    client.respond = grant;
    settings.set("monitor.fan.level", 80);
    runtime.runUntilIdle();
    EXPECT_EQ(lastApplied(), 80);
    EXPECT_FALSE(controller->controlDropped());
    EXPECT_TRUE(controller->isController());
    EXPECT_EQ(controller->message(), "");
}

TEST_F(FanControllerTest, ACurveIsNotTakenBackAfterTheHelperDroppedControl)
{
    useCurve(61);
    enable();
    client.respond = [](const FanHelperRequest& request) {
        if (request.kind == Kind::heartbeat)
            return std::optional(FanHelperResponse { false, std::nullopt, "" });
        return grant(request);
    };
    runtime.advance(FanController::heartbeatInterval);
    ASSERT_TRUE(controller->controlDropped());
    sensors.readings[0].celsius = 80;
    runtime.advance(FanController::curveSampleInterval * 3);
    EXPECT_EQ(count(Kind::apply), 1);
}

TEST_F(FanControllerTest, AHelperThatDoesNotAnswerIsSaid)
{
    client.respond = nullptr;
    enable();
    EXPECT_EQ(controller->message(), "The fan helper isn't responding.");
    EXPECT_FALSE(controller->isController());
}

TEST_F(FanControllerTest, RepliesArrivingAfterTheControllerIsGoneAreDropped)
{
    client.holdReplies = true;
    enable();
    ASSERT_EQ(client.held.size(), 1u);
    controller.reset();
    client.held[0](FanHelperResponse { true, 50, "" });
    runtime.runUntilIdle();
    // A reply reaching the freed controller is a use-after-free under ASan, and a controller that took it
    // would start sending heartbeats.
    EXPECT_TRUE(client.held[0].delivered());
    runtime.advance(FanController::heartbeatInterval * 3);
    EXPECT_EQ(client.kinds(), std::vector { Kind::apply });
}

TEST(FanReplyOnce, DeliversTheFirstReplyOnly)
{
    std::vector<std::optional<FanHelperResponse>> replies;
    FanReplyOnce reply([&](std::optional<FanHelperResponse> response) { replies.push_back(response); });
    auto copy = reply;
    copy(FanHelperResponse { true, 40, "" });
    reply(FanHelperResponse { false, std::nullopt, "late" });
    EXPECT_TRUE(reply.delivered());
    ASSERT_EQ(replies.size(), 1u);
    EXPECT_EQ(replies[0], (FanHelperResponse { true, 40, "" }));
}

TEST(FanReplyOnce, AReplyDroppedWithoutAnAnswerDeliversNone)
{
    std::vector<std::optional<FanHelperResponse>> replies;
    {
        FanReplyOnce reply([&](std::optional<FanHelperResponse> response) { replies.push_back(response); });
        auto copy = reply;
    }
    ASSERT_EQ(replies.size(), 1u);
    EXPECT_FALSE(replies[0]);
}

} // namespace
} // namespace quillmar
