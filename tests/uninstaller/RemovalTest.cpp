#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/uninstaller/Removal.h"
#include "tests/uninstaller/UninstallerFakes.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::FakeRecycler;
using Reason = RecycleFailure::Reason;

const fs::path home = "/nonexistent-home/someone";

RemovalItem leftover(const std::string& relative)
{
    auto url = home / relative;
    return { url, url.filename().string(), false };
}

const RemovalItem app { "/Applications/Example.app", "Example", true };

TEST(RemovalTest, GuardSkipsUnsafePathsAndTheAppGoesLast)
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

TEST(RemovalTest, ProgressAfterEachBatchAndCancelBetweenBatches)
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
}

struct SentenceRow {
    const char* name;
    std::vector<std::pair<fs::path, Reason>> refusals;
    std::string result;
    std::optional<std::string> failure;
    std::optional<std::string> hint;
};

TEST(RemovalTest, OutcomeSentences)
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
        EXPECT_EQ(outcome.moved.size() + outcome.failed.size(), 3u) << row.name;
    }
}

} // namespace
} // namespace quillmar
