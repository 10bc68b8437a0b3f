#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/runtime/VirtualRuntime.h"
#include "core/uninstaller/AppListOrder.h"
#include "core/uninstaller/Uninstaller.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/uninstaller/LibraryFixture.h"
#include "tests/uninstaller/UninstallerFakes.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::FakeDiskUsage;
using testing_support::FakeRecycler;
using testing_support::FakeSigningInfo;
using testing_support::makeApp;
using testing_support::makeEntries;

std::vector<std::string> names(const std::vector<Leftover>& leftovers)
{
    std::vector<std::string> all;
    for (const auto& leftover : leftovers)
        all.push_back(leftover.url.filename().string());
    return all;
}

class UninstallerTest : public testing::Test {
protected:
    UninstallerTest()
    {
        makeApp(m_home / "Applications" / "Alpha.app", "com.example.Alpha");
        makeApp(m_home / "Applications" / "Beta.app", "com.example.Beta", { { "Contents/XPCServices/Sync.xpc", "com.example.BetaSync" } });
        makeApp(m_home / "Applications" / "Tools" / "gamma.app", "com.example.Gamma");
        makeEntries(m_home / "Library",
            {
                "Caches/com.example.Alpha/",
                "Caches/com.example.Alpha.helper/",
                "Preferences/com.example.Alpha.plist",
                "Caches/com.example.Beta/",
                "Caches/com.example.BetaSync/",
                "Logs/Beta/",
            });
        m_model.setChangeCallback([this] { ++m_changes; });
    }

    InstalledApp app(const std::string& relative)
    {
        auto found = m_model.app(m_home / "Applications" / relative);
        EXPECT_TRUE(found.has_value()) << relative;
        return found.value_or(InstalledApp {});
    }

    TemporaryFolder m_folder;
    fs::path m_home = m_folder.path() / "home";
    VirtualRuntime m_runtime;
    FakeSigningInfo m_signing;
    FakeDiskUsage m_usage;
    FakeRecycler m_recycler;
    Uninstaller m_model { m_runtime, { m_home, { m_home / "Applications" }, m_home / "Library" },
        { m_signing, m_usage, m_recycler } };
    int m_changes = 0;
};

TEST_F(UninstallerTest, ListsThenMeasuresInTheBackground)
{
    m_model.loadApps();
    EXPECT_TRUE(m_model.isLoadingApps());
    EXPECT_TRUE(m_model.apps().empty());
    m_runtime.runUntilIdle();
    EXPECT_FALSE(m_model.isLoadingApps());
    EXPECT_FALSE(m_model.isMeasuringApps());
    ASSERT_EQ(m_model.apps().size(), 3u);
    for (const auto& listed : m_model.apps()) {
        EXPECT_GT(listed.size, 0) << listed.name;
        EXPECT_EQ(listed.lastUsed, m_usage.time) << listed.name;
        EXPECT_EQ(listed.version, "1.2");
    }
    EXPECT_EQ(m_model.totalAppsSize(), m_model.apps()[0].size + m_model.apps()[1].size + m_model.apps()[2].size);

    m_model.setQuery("  GAM ");
    ASSERT_EQ(m_model.filteredApps().size(), 1u);
    EXPECT_EQ(m_model.filteredApps()[0].name, "gamma");
    m_model.setQuery("example.b");
    ASSERT_EQ(m_model.filteredApps().size(), 1u);
    EXPECT_EQ(m_model.filteredApps()[0].name, "Beta");
}

TEST_F(UninstallerTest, SortsByNameSizeAndLastUse)
{
    auto alpha = app("Alpha.app");
    auto beta = app("Beta.app");
    auto gamma = app("Tools/gamma.app");
    alpha.size = 10;
    beta.size = 30;
    gamma.size = 20;
    beta.lastUsed = WallTime(std::chrono::seconds(100));
    gamma.lastUsed = WallTime(std::chrono::seconds(200));
    auto order = [](const std::vector<InstalledApp>& apps) {
        std::vector<std::string> all;
        for (const auto& each : apps)
            all.push_back(each.name);
        return all;
    };
    EXPECT_EQ(order(AppListOrder::arrange({ gamma, beta, alpha }, "", Uninstaller::Sort::name)),
        (std::vector<std::string> { "Alpha", "Beta", "gamma" }));
    EXPECT_EQ(order(AppListOrder::arrange({ gamma, beta, alpha }, "", Uninstaller::Sort::size)),
        (std::vector<std::string> { "Beta", "gamma", "Alpha" }));
    EXPECT_EQ(order(AppListOrder::arrange({ alpha, beta, gamma }, "", Uninstaller::Sort::lastUsed)),
        (std::vector<std::string> { "gamma", "Beta", "Alpha" }));
    EXPECT_EQ(uninstallSort("lastUsed"), Uninstaller::Sort::lastUsed);
    EXPECT_EQ(uninstallSort("date"), std::nullopt);
}

TEST_F(UninstallerTest, SelectionSearchesThenMeasuresLeftovers)
{
    m_model.select(app("Alpha.app"));
    EXPECT_TRUE(m_model.isScanning());
    m_runtime.runUntilIdle();
    EXPECT_FALSE(m_model.isScanning());
    EXPECT_EQ(names(m_model.leftovers()),
        (std::vector<std::string> { "com.example.Alpha", "com.example.Alpha.helper", "com.example.Alpha.plist" }));
    EXPECT_EQ(names(m_model.exactLeftovers()), (std::vector<std::string> { "com.example.Alpha", "com.example.Alpha.plist" }));
    EXPECT_EQ(names(m_model.relatedLeftovers()), (std::vector<std::string> { "com.example.Alpha.helper" }));
    EXPECT_GT(m_model.appSize(), 0);
    // The cache folder counts itself; the preference file counts itself.
    EXPECT_EQ(m_model.leftoverSize(), 2 * m_usage.bytesPerEntry);

    m_model.setAll(Uninstaller::Match::related, Uninstaller::Tick::on);
    EXPECT_EQ(m_model.leftoverSize(), 3 * m_usage.bytesPerEntry);
    m_model.setAll(Uninstaller::Match::exact, Uninstaller::Tick::off);
    EXPECT_EQ(m_model.leftoverSize(), m_usage.bytesPerEntry);
    m_model.toggle(m_model.relatedLeftovers().front());
    EXPECT_EQ(m_model.leftoverSize(), 0);
}

TEST_F(UninstallerTest, NewSelectionDropsTheRunningSearch)
{
    m_model.select(app("Alpha.app"));
    // The search of Alpha finishes in the background and posts its results ...
    ASSERT_TRUE(m_runtime.runNext(Duration::zero()));
    // ... but the user has chosen Beta before they arrive.
    m_model.select(app("Beta.app"));
    EXPECT_TRUE(m_model.leftovers().empty());
    m_runtime.runUntilIdle();
    EXPECT_EQ(m_model.selectedApp().value().bundleID, "com.example.Beta");
    EXPECT_EQ(names(m_model.leftovers()), (std::vector<std::string> { "com.example.Beta", "com.example.BetaSync", "Beta" }));
    EXPECT_EQ(m_model.identity().value().embeddedBundleIDs, (std::vector<std::string> { "com.example.BetaSync" }));
}

TEST_F(UninstallerTest, CancelDropsResultsAndRefusedAppsAreNotSearched)
{
    m_model.select(app("Alpha.app"));
    m_model.cancel();
    EXPECT_FALSE(m_model.isScanning());
    m_runtime.runUntilIdle();
    EXPECT_TRUE(m_model.leftovers().empty());

    InstalledApp own { m_home / "Applications" / "Self.app", "Self", "com.quillmar.Self", "", 0, std::nullopt };
    makeApp(own.url, own.bundleID);
    m_model.select(own);
    EXPECT_FALSE(m_model.isScanning());
    EXPECT_EQ(m_runtime.pendingCount(), 0u);
}

TEST_F(UninstallerTest, RemovalKeepsFailuresWithTheirErrorAndRefreshes)
{
    m_model.loadApps();
    m_runtime.runUntilIdle();
    auto alpha = app("Alpha.app");
    m_model.select(alpha);
    m_runtime.runUntilIdle();
    auto preferences = m_home / "Library" / "Preferences" / "com.example.Alpha.plist";
    m_recycler.refuse[preferences] = RecycleFailure::Reason::permission;

    std::optional<RemovalOutcome> finished;
    m_model.remove(alpha, /*includingApp=*/true, [&finished](const RemovalOutcome& outcome) { finished = outcome; });
    EXPECT_TRUE(m_model.isRemoving());
    m_runtime.runUntilIdle();
    ASSERT_TRUE(finished.has_value());
    EXPECT_FALSE(m_model.isRemoving());
    EXPECT_EQ(m_recycler.handled(), (std::vector<fs::path> { m_home / "Library" / "Caches" / "com.example.Alpha", preferences, alpha.url }));
    EXPECT_EQ(finished->resultLine(), "2 moved to the Trash");
    EXPECT_EQ(finished->failureLine(), "Couldn't remove com.example.Alpha.plist");
    EXPECT_EQ(finished->hint(), "Full Disk Access lets Quillmar remove app data");
    EXPECT_EQ(m_model.removalProgress(), 1.0);
    // The unticked related one and the failed one stay; the failed one says why.
    EXPECT_EQ(names(m_model.leftovers()), (std::vector<std::string> { "com.example.Alpha.helper", "com.example.Alpha.plist" }));
    EXPECT_EQ(m_model.leftovers()[1].failure, "Couldn't remove com.example.Alpha.plist");
    EXPECT_TRUE(m_model.selectedApp().has_value());
    // The fake recycler leaves files in place, so the refreshed list still has Alpha.
    EXPECT_EQ(m_model.apps().size(), 3u);
}

TEST_F(UninstallerTest, ResetRemovesTickedDataOnlyAndIgnoresOtherApps)
{
    auto alpha = app("Alpha.app");
    m_model.select(alpha);
    m_runtime.runUntilIdle();
    m_model.remove(app("Beta.app"), /*includingApp=*/true, nullptr);
    EXPECT_FALSE(m_model.isRemoving());

    m_model.reset(nullptr);
    m_runtime.runUntilIdle();
    EXPECT_EQ(m_recycler.handled(),
        (std::vector<fs::path> { m_home / "Library" / "Caches" / "com.example.Alpha",
            m_home / "Library" / "Preferences" / "com.example.Alpha.plist" }));
    EXPECT_EQ(m_model.lastOutcome().value().resultLine(), "2 moved to the Trash");
    EXPECT_GT(m_changes, 0);
}

// Whichever front end asks, a refused application stays where it is.
TEST_F(UninstallerTest, RefusedApplicationsAreNeverMoved)
{
    auto nested = makeApp(m_home / "Applications" / "Alpha.app" / "Contents" / "Helpers" / "Inner.app", "com.example.Inner");
    auto shared = makeApp(m_home / "Applications" / "Shared.app", "com.apple.Shared");
    for (const auto& url : { nested, shared }) {
        auto refused = m_model.app(url);
        ASSERT_TRUE(refused.has_value()) << url;
        m_model.select(refused);
        std::optional<RemovalOutcome> finished;
        m_model.remove(*refused, /*includingApp=*/true, [&finished](const RemovalOutcome& outcome) { finished = outcome; });
        m_runtime.runUntilIdle();
        EXPECT_TRUE(m_model.leftovers().empty()) << url;
        ASSERT_TRUE(finished.has_value()) << url;
        EXPECT_TRUE(finished->moved.empty()) << url;
        EXPECT_EQ(finished->skipped.size(), 1u) << url;
    }
    EXPECT_TRUE(m_recycler.handled().empty());
}

} // namespace
} // namespace quillmar
