#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/uninstaller/Removal.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/uninstaller/LibraryFixture.h"
#include "tests/uninstaller/UninstallerFakes.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::FakeRecycler;
using testing_support::makeApp;
using Reason = RecycleFailure::Reason;

class RemovalTest : public testing::Test {
protected:
    RemovalItem leftover(const std::string& relative) const
    {
        auto url = home / relative;
        return { url, url.filename().string(), false };
    }

    // Every item lands in exactly one list.
    static std::size_t filed(const RemovalOutcome& outcome)
    {
        return outcome.moved.size() + outcome.failed.size() + outcome.skipped.size() + outcome.notAttempted.size()
            + outcome.repeated.size();
    }

    TemporaryFolder m_folder;
    const fs::path home = m_folder.path() / "home";
    const RemovalItem app { makeApp(m_folder.path() / "Applications" / "Example.app", "com.example.App"), "Example", true };
};

TEST_F(RemovalTest, GuardSkipsUnsafePathsAndTheAppGoesLast)
{
    FakeRecycler recycler;
    auto outcome = Removal::run({ app, leftover("Library/Caches"), leftover("Library/Caches/com.example.App"),
                                    leftover("Library/Preferences/com.example.App.plist"), leftover("Library/Caches/com.example.App") },
        home, recycler, /*batchSize=*/2);
    EXPECT_EQ(recycler.handled(),
        (std::vector<fs::path> { home / "Library/Caches/com.example.App", home / "Library/Preferences/com.example.App.plist",
            app.url }));
    EXPECT_EQ(recycler.batches.size(), 2u);
    EXPECT_EQ(outcome.skipped, (std::vector<RemovalItem> { leftover("Library/Caches") }));
    EXPECT_EQ(outcome.moved.size(), 3u);
    EXPECT_EQ(outcome.resultLine(), "3 moved to the Trash");
    EXPECT_EQ(outcome.failureLine(), std::nullopt);
    EXPECT_EQ(outcome.hint(), std::nullopt);
}

TEST_F(RemovalTest, ProgressAfterEachBatchAndCancelBetweenBatches)
{
    FakeRecycler recycler;
    std::vector<double> fractions;
    std::vector<RemovalItem> items;
    for (int index = 0; index < 5; ++index)
        items.push_back(leftover("Library/Caches/item" + std::to_string(index)));
    auto outcome = Removal::run(items, home, recycler, /*batchSize=*/2,
        [&fractions](double fraction) { fractions.push_back(fraction); },
        [&fractions] { return fractions.size() == 2; });
    EXPECT_EQ(fractions, (std::vector<double> { 0.4, 0.8 }));
    EXPECT_TRUE(outcome.cancelled);
    EXPECT_EQ(outcome.moved.size(), 4u);
    EXPECT_EQ(outcome.notAttempted, (std::vector<RemovalItem> { items[4] }));
    EXPECT_EQ(filed(outcome), items.size());
}

TEST_F(RemovalTest, RepeatedItemsAreFiledOnceEach)
{
    FakeRecycler recycler;
    auto cache = leftover("Library/Caches/com.example.App");
    auto refused = leftover("Library/Caches");
    auto gone = leftover("Library/Logs/com.example.App");
    recycler.refuse[gone.url] = Reason::notFound;
    std::vector<RemovalItem> items { cache, refused, gone, cache, refused, gone, app, app };
    auto outcome = Removal::run(items, home, recycler);
    EXPECT_EQ(recycler.handled(), (std::vector<fs::path> { cache.url, gone.url, app.url }));
    EXPECT_EQ(outcome.moved, (std::vector<RemovalItem> { cache, app }));
    EXPECT_EQ(outcome.skipped, (std::vector<RemovalItem> { refused }));
    EXPECT_EQ(outcome.repeated, (std::vector<RemovalItem> { cache, refused, gone, app }));
    ASSERT_EQ(outcome.failed.size(), 1u);
    EXPECT_EQ(outcome.failed[0].item, gone);
    EXPECT_EQ(filed(outcome), items.size());
}

// A link planted while an earlier batch is being moved is caught before the next batch goes.
TEST_F(RemovalTest, GuardIsAskedAgainBeforeEachBatch)
{
    auto first = leftover("Library/Caches/com.example.App/data");
    auto second = leftover("Library/Containers/com.example.App/Data/notes");
    fs::create_directories(first.url);
    fs::create_directories(second.url);
    auto elsewhere = m_folder.path() / "elsewhere";
    fs::create_directories(elsewhere / "notes");
    auto container = home / "Library/Containers/com.example.App/Data";

    FakeRecycler recycler;
    recycler.duringBatch = [&] {
        if (recycler.batches.size() == 1) {
            fs::remove_all(container);
            fs::create_directory_symlink(elsewhere, container);
        }
    };
    auto outcome = Removal::run({ first, second }, home, recycler, /*batchSize=*/1);
    EXPECT_EQ(recycler.handled(), (std::vector<fs::path> { first.url }));
    EXPECT_EQ(outcome.moved, (std::vector<RemovalItem> { first }));
    EXPECT_EQ(outcome.skipped, (std::vector<RemovalItem> { second }));
}

TEST_F(RemovalTest, RefusedApplicationsNeverGo)
{
    auto own = makeApp(m_folder.path() / "Applications" / "Quillmar.app", "com.quillmar.Quillmar");
    auto nested = makeApp(app.url / "Contents" / "Helpers" / "Helper.app", "com.example.Helper");
    std::vector<RemovalItem> items { { own, "Quillmar", true }, { nested, "Helper", true }, leftover("Library/Caches/x") };
    FakeRecycler recycler;
    auto outcome = Removal::run(items, home, recycler);
    EXPECT_EQ(recycler.handled(), (std::vector<fs::path> { home / "Library/Caches/x" }));
    EXPECT_EQ(outcome.skipped, (std::vector<RemovalItem> { items[0], items[1] }));
}

struct SentenceRow {
    const char* name;
    std::vector<std::pair<fs::path, Reason>> refusals;
    std::string result;
    std::optional<std::string> failure;
    std::optional<std::string> hint;
};

TEST_F(RemovalTest, OutcomeSentences)
{
    auto cache = leftover("Library/Caches/com.example.App");
    auto preferences = leftover("Library/Preferences/com.example.App.plist");
    const SentenceRow rows[] = {
        { "allMoved", {}, "3 moved to the Trash", std::nullopt, std::nullopt },
        { "oneLeftoverGone", { { cache.url, Reason::notFound } }, "2 moved to the Trash",
            "Couldn't remove com.example.App", std::nullopt },
        { "appRefusedByPrivacy", { { app.url, Reason::permission } }, "2 moved to the Trash", "Couldn't remove Example",
            "Allow App Management in Privacy & Security" },
        { "dataRefusedByPrivacy", { { preferences.url, Reason::permission }, { cache.url, Reason::other } },
            "1 moved to the Trash", "Some files couldn't be moved", "Full Disk Access lets Quillmar remove app data" },
        { "appHintWins", { { preferences.url, Reason::permission }, { app.url, Reason::permission } },
            "1 moved to the Trash", "Some files couldn't be moved", "Allow App Management in Privacy & Security" },
    };
    for (const auto& row : rows) {
        FakeRecycler recycler;
        for (const auto& [path, reason] : row.refusals)
            recycler.refuse[path] = reason;
        auto outcome = Removal::run({ cache, preferences, app }, home, recycler);
        EXPECT_EQ(outcome.resultLine(), row.result) << row.name;
        EXPECT_EQ(outcome.failureLine(), row.failure) << row.name;
        EXPECT_EQ(outcome.hint(), row.hint) << row.name;
        EXPECT_EQ(filed(outcome), 3u) << row.name;
    }
}

} // namespace
} // namespace quillmar
