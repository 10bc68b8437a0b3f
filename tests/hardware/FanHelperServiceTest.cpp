#include <memory>

#include <gtest/gtest.h>

#include "core/hardware/helper/FanHelperService.h"
#include "core/runtime/VirtualRuntime.h"
#include "tests/hardware/FakeFanHelperPorts.h"
#include "tests/hardware/SimulatedSMC.h"

namespace quillmar {
namespace {

using Bytes = std::vector<std::uint8_t>;
using ExitReason = FanHelperService::ExitReason;

constexpr FanHelperTransport::SessionID app = 1;
constexpr FanHelperTransport::SessionID other = 2;
const std::filesystem::path marker = "/var/run/com.quillmar.fanhelper.active";

class FanHelperServiceTest : public testing::Test {
protected:
    FanHelperServiceTest()
    {
        auto driver = std::make_unique<SimulatedSMC>(&runtime.clock());
        smc = driver.get();
        setFanCount(*smc, 1);
        addFan(*smc, 0, 1200, 6000);
        addForceTest(*smc);
        connection = std::move(SMCConnection::open(std::move(driver))).value();
        engine = std::make_unique<FanControlEngine>(*connection, runtime.clock());
        FanHelperService::Configuration configuration;
        configuration.teamIdentifier = "TEAM123456";
        service = std::make_unique<FanHelperService>(runtime, *engine, files, transport, configuration,
            [this](ExitReason reason) { exits.push_back(reason); });
    }

    void startWithSession()
    {
        service->start();
        transport.open(app);
    }

    bool fansManual() const { return smc->bytes("F0Md") == Bytes { 1 }; }
    bool fansAutomatic() const { return smc->bytes("F0Md") == Bytes { 0 } && smc->bytes("Ftst") == Bytes { 0 }; }

    void refuseAutomatic(bool refuse)
    {
        if (!refuse) {
            smc->setWriteRule(nullptr);
            return;
        }
        smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
            if (key == "F0Md" && bytes[0] == 0)
                return std::nullopt;
            return bytes;
        });
    }

    VirtualRuntime runtime;
    SimulatedSMC* smc = nullptr;
    std::unique_ptr<SMCConnection> connection;
    std::unique_ptr<FanControlEngine> engine;
    FakeFanHelperFiles files;
    FakeFanHelperTransport transport;
    std::vector<ExitReason> exits;
    std::unique_ptr<FanHelperService> service;
};

TEST_F(FanHelperServiceTest, CodeRequirementNamesTheAppAndTheTeam)
{
    EXPECT_EQ(FanHelperService::codeRequirement("com.quillmar.app", "TEAM123456"),
        "anchor apple generic and identifier \"com.quillmar.app\" and certificate leaf[subject.OU] = \"TEAM123456\"");
}

TEST_F(FanHelperServiceTest, StartTakesTheLockCreatedPrivateAndListensForTheApp)
{
    service->start();
    EXPECT_EQ(files.lockPath, "/var/run/com.quillmar.fanhelper.lock");
    EXPECT_EQ(files.lock.openedWithMode, 0600u);
    EXPECT_TRUE(files.lock.held);
    EXPECT_TRUE(transport.listening);
    EXPECT_EQ(transport.requirement, FanHelperService::codeRequirement("com.quillmar.app", "TEAM123456"));
    EXPECT_TRUE(exits.empty());
}

TEST_F(FanHelperServiceTest, ALockHeldByAnotherHelperMeansExit)
{
    files.lock.attempt = FanHelperLockFile::LockAttempt::heldElsewhere;
    service->start();
    EXPECT_EQ(exits, std::vector { ExitReason::alreadyRunning });
    EXPECT_FALSE(transport.listening);
}

struct LockRow {
    const char* name;
    FanHelperLockFile::Facts facts;
    FanHelperLockFile::LockAttempt attempt;
    bool failOpen;
};

class FanHelperServiceLock : public FanHelperServiceTest, public testing::WithParamInterface<LockRow> { };

TEST_P(FanHelperServiceLock, IsRefused)
{
    files.lock.facts = GetParam().facts;
    files.lock.attempt = GetParam().attempt;
    files.failOpen = GetParam().failOpen;
    service->start();
    EXPECT_EQ(exits, std::vector { ExitReason::lockRefused });
    EXPECT_FALSE(files.lock.held);
    EXPECT_FALSE(transport.listening);
}

INSTANTIATE_TEST_SUITE_P(Table, FanHelperServiceLock,
    testing::Values(
        LockRow { "notARegularFile", { false, 1, 0 }, FanHelperLockFile::LockAttempt::locked, false },
        LockRow { "aSecondHardLink", { true, 2, 0 }, FanHelperLockFile::LockAttempt::locked, false },
        LockRow { "ownedByAUser", { true, 1, 501 }, FanHelperLockFile::LockAttempt::locked, false },
        LockRow { "cannotBeOpened", { true, 1, 0 }, FanHelperLockFile::LockAttempt::locked, true },
        LockRow { "cannotBeLocked", { true, 1, 0 }, FanHelperLockFile::LockAttempt::failed, false }),
    [](const testing::TestParamInfo<LockRow>& row) { return std::string(row.param.name); });

TEST_F(FanHelperServiceTest, AMarkerLeftByACrashRestoresAutomaticAtStart)
{
    smc->setKey("F0Md", "ui8 ", { 1 });
    smc->setKey("Ftst", "ui8 ", { 1 });
    files.markers.insert(marker);
    service->start();
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(files.markers.contains(marker));
    EXPECT_FALSE(service->restorePending());
}

TEST_F(FanHelperServiceTest, ApplyMakesTheSessionTheControllerAndWritesTheMarker)
{
    startWithSession();
    auto response = transport.send(app, FanHelperRequest::apply(50));
    EXPECT_EQ(response, (FanHelperResponse { true, 50, "" }));
    EXPECT_TRUE(fansManual());
    EXPECT_TRUE(files.markers.contains(marker));
    EXPECT_EQ(service->controller(), app);
    EXPECT_EQ(transport.send(app, FanHelperRequest::status()), (FanHelperResponse { true, 50, "" }));
}

TEST_F(FanHelperServiceTest, OnlyOneSessionControlsTheFans)
{
    startWithSession();
    transport.open(other);
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    for (auto request : { FanHelperRequest::apply(90), FanHelperRequest::restore(), FanHelperRequest::heartbeat() }) {
        auto response = transport.send(other, request);
        EXPECT_FALSE(response.controller);
        EXPECT_EQ(response.message, "Another session is controlling the fans");
    }
    EXPECT_EQ(smc->value("F0Tg"), 3600.0);
    EXPECT_TRUE(fansManual());
    EXPECT_EQ(transport.send(other, FanHelperRequest::status()), (FanHelperResponse { false, 50, "" }));
}

TEST_F(FanHelperServiceTest, HeartbeatsKeepControlAndTheirSilenceRestoresAutomatic)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    for (int second = 0; second < 20; ++second) {
        runtime.advance(seconds(1.0));
        ASSERT_TRUE(transport.send(app, FanHelperRequest::heartbeat()).controller) << second;
    }
    EXPECT_TRUE(fansManual());

    runtime.advance(FanHelperService::heartbeatTimeout - seconds(0.01));
    EXPECT_TRUE(fansManual());
    runtime.advance(seconds(0.01));
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(service->controller());
    EXPECT_FALSE(files.markers.contains(marker));
    EXPECT_EQ(transport.send(app, FanHelperRequest::heartbeat()), (FanHelperResponse { false, std::nullopt, "" }));
}

TEST_F(FanHelperServiceTest, TheControllerGoingAwayRestoresAutomatic)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    transport.close(app);
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(service->controller());
}

TEST_F(FanHelperServiceTest, RestoreHandsTheFansBackAndFreesControl)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    EXPECT_EQ(transport.send(app, FanHelperRequest::restore()), (FanHelperResponse { false, std::nullopt, "" }));
    EXPECT_TRUE(fansAutomatic());
    transport.open(other);
    EXPECT_TRUE(transport.send(other, FanHelperRequest::apply(20)).controller);
}

TEST_F(FanHelperServiceTest, ARestoreThatDoesNotTakeIsRetriedAndHoldsOtherRequests)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    refuseAutomatic(true);
    EXPECT_EQ(transport.send(app, FanHelperRequest::restore()).message, "The fans didn't go back to automatic yet. Retrying.");
    EXPECT_TRUE(service->restorePending());
    EXPECT_TRUE(files.markers.contains(marker));
    auto held = transport.send(app, FanHelperRequest::apply(60));
    EXPECT_EQ(held.message, "Finishing a restore first");
    EXPECT_FALSE(held.controller);

    runtime.advance(FanHelperService::restoreRetryInterval);
    EXPECT_TRUE(service->restorePending());
    refuseAutomatic(false);
    runtime.advance(FanHelperService::restoreRetryInterval);
    EXPECT_FALSE(service->restorePending());
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(files.markers.contains(marker));
    EXPECT_TRUE(transport.send(app, FanHelperRequest::apply(60)).controller);
}

TEST_F(FanHelperServiceTest, AFailedApplyReportsItsSentenceAndLeavesTheFansAutomatic)
{
    startWithSession();
    smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (key == "F0Md" && bytes[0] != 0)
            return std::nullopt;
        return bytes;
    });
    auto response = transport.send(app, FanHelperRequest::apply(70));
    EXPECT_EQ(response, (FanHelperResponse { false, std::nullopt, "The fans wouldn't switch to manual" }));
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(files.markers.contains(marker));
    EXPECT_FALSE(service->restorePending());
}

TEST_F(FanHelperServiceTest, AnApplyIsRefusedWhenTheMarkerCannotBeWritten)
{
    startWithSession();
    files.failMarkerWrite = true;
    auto response = transport.send(app, FanHelperRequest::apply(70));
    EXPECT_FALSE(response.controller);
    EXPECT_EQ(response.message, FanHelperService::markerUnwritableMessage);
    EXPECT_TRUE(fansAutomatic()) << "without the marker a crash would leave them manual";
    EXPECT_FALSE(service->controller());

    // Already in control: a new level is refused too, and the fans go back to automatic.
    files.failMarkerWrite = false;
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    files.failMarkerWrite = true;
    EXPECT_EQ(transport.send(app, FanHelperRequest::apply(60)).message, FanHelperService::markerUnwritableMessage);
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(service->controller());
}

TEST_F(FanHelperServiceTest, TerminatingTheHelperWhileItControlsTheFansRestoresAutomatic)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    service->terminate();
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(files.markers.contains(marker));
    EXPECT_FALSE(service->controller());
    EXPECT_FALSE(transport.listening);
}

TEST_F(FanHelperServiceTest, DestroyingTheHelperWhileItControlsTheFansRestoresAutomatic)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    service.reset();
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(files.markers.contains(marker));
}

TEST_F(FanHelperServiceTest, ARestoreThatDoesNotTakeAtTheEndLeavesTheMarkerForTheNextStart)
{
    startWithSession();
    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    refuseAutomatic(true);
    service->terminate();
    EXPECT_TRUE(files.markers.contains(marker));
}

TEST_F(FanHelperServiceTest, IdleExitComesOnlyWithoutSessionsControllerOrPendingRestore)
{
    service->start();
    runtime.advance(FanHelperService::idleExitDelay - seconds(1));
    transport.open(app);
    runtime.advance(seconds(60));
    EXPECT_TRUE(exits.empty());

    ASSERT_TRUE(transport.send(app, FanHelperRequest::apply(50)).controller);
    refuseAutomatic(true);
    transport.close(app);
    EXPECT_TRUE(service->restorePending());
    runtime.advance(seconds(60));
    EXPECT_TRUE(exits.empty()) << "a pending restore keeps the helper";

    refuseAutomatic(false);
    runtime.advance(FanHelperService::restoreRetryInterval);
    EXPECT_TRUE(fansAutomatic());
    runtime.advance(FanHelperService::idleExitDelay);
    EXPECT_EQ(exits, std::vector { ExitReason::idle });
    EXPECT_FALSE(transport.listening);
}

} // namespace
} // namespace quillmar
