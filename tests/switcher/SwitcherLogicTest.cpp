#include <gtest/gtest.h>

#include <unordered_set>

#include "core/switcher/SwitcherLogic.h"
#include "tests/switcher/SwitcherTestSupport.h"

namespace quillmar {
namespace {

using namespace SwitcherLogic;

TEST(SwitcherItemTest, IdAndHashFollowWindowOrApp)
{
    SwitcherItem window { 4'000'000'000u, 12, "Mail", "Inbox" };
    SwitcherItem windowless { std::nullopt, 12, "Mail", "" };
    EXPECT_EQ(window.id(), "w4000000000");
    EXPECT_EQ(windowless.id(), "a12");
    // A window numbered like a pid does not collide with that pid's windowless card.
    SwitcherItem numberedLikePID { 12u, 99, "Other", "" };
    std::hash<SwitcherItem> hash;
    EXPECT_NE(hash(numberedLikePID), hash(windowless));
    std::unordered_set<SwitcherItem> set { window, windowless, numberedLikePID };
    EXPECT_EQ(set.size(), 3u);
}

struct InitialSelectionRow {
    const char* name;
    std::vector<std::size_t> sizes;
    std::optional<std::int32_t> activePID;
    bool reverse;
    std::size_t expected;
};

TEST(SwitcherLogicTest, InitialSelection)
{
    const InitialSelectionRow rows[] = {
        { "empty list", {}, 1, false, 0 },
        { "reverse takes the last card", { 2, 3 }, 1, true, 4 },
        { "no active app", { 2, 3 }, std::nullopt, false, 0 },
        { "first group is not the active app", { 2, 3 }, 2, false, 0 },
        { "only the active app: its second window", { 3 }, 1, false, 1 },
        { "only the active app with one window", { 1 }, 1, false, 0 },
        { "the previous app's first card", { 2, 3 }, 1, false, 2 },
    };
    for (const auto& row : rows)
        EXPECT_EQ(initialSelection(groupsOfSizes(row.sizes), row.activePID, row.reverse), row.expected) << row.name;
}

struct NavigationRow {
    const char* name;
    std::size_t from;
    bool forward;
    std::size_t expected;
};

TEST(SwitcherLogicTest, JumpGroupStopsAtBothEnds)
{
    auto groups = groupsOfSizes({ 2, 1, 3 }); // starts 0, 2, 3
    EXPECT_EQ(groupStarts(groups), (std::vector<std::size_t> { 0, 2, 3 }));
    const NavigationRow rows[] = {
        { "down from the first card", 0, true, 2 },
        { "down from inside the first group", 1, true, 2 },
        { "down into the last group", 2, true, 3 },
        { "down on the last group stays", 5, true, 3 },
        { "up on the first group stays", 1, false, 0 },
        { "up from inside the last group", 4, false, 2 },
        { "an index past the end is kept", 9, true, 9 },
    };
    for (const auto& row : rows)
        EXPECT_EQ(jumpGroup(row.from, groups, row.forward), row.expected) << row.name;
}

TEST(SwitcherLogicTest, NextInGroupWrapsInsideTheApp)
{
    auto groups = groupsOfSizes({ 2, 1, 3 });
    const std::pair<std::size_t, std::size_t> steps[] = { { 0, 1 }, { 1, 0 }, { 2, 2 }, { 3, 4 }, { 4, 5 }, { 5, 3 }, { 7, 7 } };
    for (auto [from, expected] : steps)
        EXPECT_EQ(nextInGroup(from, groups), expected) << "from " << from;
}

struct LimitRow {
    const char* name;
    std::vector<std::size_t> sizes;
    std::size_t limit;
    const char* expected;
};

TEST(SwitcherLogicTest, LimitKeepsOneCardPerAppFirst)
{
    const LimitRow rows[] = {
        { "5, 1 and 4 windows with 3 cards: one each", { 5, 1, 4 }, 3, "A[w11] B[w21] C[w31]" },
        { "the rest goes back in group order", { 5, 1, 4 }, 6, "A[w11 w12 w13 w14] B[w21] C[w31]" },
        { "fewer cards than apps: the first apps", { 2, 2, 2 }, 2, "A[w11] B[w21]" },
        { "within the limit: unchanged", { 2, 1 }, 3, "A[w11 w12] B[w21]" },
        { "a limit of nothing", { 1 }, 0, "" },
    };
    for (const auto& row : rows)
        EXPECT_EQ(describe(limited(groupsOfSizes(row.sizes), row.limit)), row.expected) << row.name;
}

struct StepRow {
    const char* name;
    std::size_t index;
    std::int64_t step;
    std::size_t count;
    bool wrap;
    std::size_t expected;
};

TEST(SwitcherLogicTest, Stepping)
{
    const StepRow rows[] = {
        { "forward past the end wraps", 4, 1, 5, true, 0 },
        { "back past the start wraps", 0, -1, 5, true, 4 },
        { "many steps wrap more than once", 1, -12, 5, true, 4 },
        { "forward past the end holds", 4, 1, 5, false, 4 },
        { "back past the start holds", 0, -1, 5, false, 0 },
        { "no cards", 0, 1, 0, true, 0 },
    };
    for (const auto& row : rows)
        EXPECT_EQ(stepped(row.index, row.step, row.count, row.wrap), row.expected) << row.name;
}

struct FilterRow {
    const char* name;
    const char* query;
    const char* expected;
};

TEST(SwitcherLogicTest, FilterFoldsAndMatchesEveryWord)
{
    std::vector<SwitcherGroup> groups {
        { 1, "Safari", false, { { 11u, 1, "Safari", "Crème brûlée recipe" }, { 12u, 1, "Safari", "Bookmarks" } } },
        { 2, "Notes", false, { { 21u, 2, "Notes", "Groceries" } } },
        { 3, "Ｔｅｒｍｉｎａｌ", false, { { 31u, 3, "Ｔｅｒｍｉｎａｌ", "zsh" } } },
    };
    const FilterRow rows[] = {
        { "one word in the app name, one in the title, any case and accents", "SAFARI creme", "Safari[w11]" },
        { "accents in the query", "brûlée", "Safari[w11]" },
        { "words in any order", "recipe safari", "Safari[w11]" },
        { "a word must not match across a space", "ib", "" },
        { "groups left empty are dropped, order kept", "o", "Safari[w12] Notes[w21]" },
        { "full-width letters fold to plain ones", "terminal", "Ｔｅｒｍｉｎａｌ[w31]" },
        { "surrounding and repeated spaces", "  notes   groc  ", "Notes[w21]" },
        { "a blank query changes nothing", "   ", "Safari[w11 w12] Notes[w21] Ｔｅｒｍｉｎａｌ[w31]" },
        { "no match", "mail", "" },
    };
    for (const auto& row : rows)
        EXPECT_EQ(describe(filtered(groups, row.query)), row.expected) << row.name;
}

TEST(SwitcherLogicTest, FoldingSameForAsciiAndUnicodePaths)
{
    EXPECT_EQ(foldedForFilter("Mail  -\tInbox "), "mail - inbox");
    EXPECT_EQ(foldedForFilter("Crème\u00a0Brûlée"), "creme brulee");
    EXPECT_EQ(foldedForFilter("ÉCOLE"), "ecole");
}

struct GroupingRow {
    const char* name;
    SwitcherOptions options;
    const char* expected;
};

TEST(SwitcherLogicTest, GroupingOrdersAndFilters)
{
    // Mail (10) is frontmost, Notes (20) was used before it, Music (30) is hidden, Books (40) has no
    // window, Maps (50) has only a minimised window, and Zed (60) and Atlas (70) were never active.
    std::vector<AppSnapshot> apps {
        { 60, "Zed", "", false, false },
        { 70, "Atlas", "", false, false },
        { 30, "Music", "", true, false },
        { 10, "Mail", "", false, true },
        { 20, "Notes", "", false, false },
        { 40, "Books", "", false, false },
        { 50, "Maps", "", false, false },
    };
    std::vector<WindowEntry> windows {
        { 101, 10, "Mail", "Inbox", { 0, 0, 800, 600 }, false, true },
        { 102, 10, "Mail", "Draft", { 0, 0, 800, 600 }, true, true },
        { 103, 10, "Mail", "Old", { 2000, 0, 800, 600 }, false, false },
        { 104, 10, "Mail", "Sent", { 2000, 0, 800, 600 }, false, true },
        { 201, 20, "Notes", "Todo", { 10, 10, 300, 300 }, false, true },
        { 301, 30, "Music", "Library", { 10, 10, 300, 300 }, false, true },
        { 501, 50, "Maps", "Route", { 10, 10, 300, 300 }, true, true },
        { 601, 60, "Zed", "main.cpp", { 10, 10, 300, 300 }, false, true },
        { 701, 70, "Atlas", "World", { 10, 10, 300, 300 }, false, true },
    };
    std::vector<std::int32_t> recency { 10, 20, 50, 30, 40 };
    SwitcherOptions defaults;
    SwitcherOptions currentSpace;
    currentSpace.spaces = SwitcherSpaces::current;
    SwitcherOptions thisDisplay;
    thisDisplay.currentDisplayOnly = true;
    SwitcherOptions strict;
    strict.minimizedWindows = false;
    strict.hiddenApps = false;
    strict.windowlessApps = false;

    const GroupingRow rows[] = {
        { "recency, then on-screen apps, off-screen apps, windowless apps; strangers by name",
            defaults,
            "Mail*[w101 w104 w102 w103] Notes[w201] Atlas[w701] Zed[w601] Maps[w501] Music[w301] Books[a40]" },
        { "the current Space only", currentSpace,
            "Mail*[w101 w104 w102] Notes[w201] Atlas[w701] Zed[w601] Maps[w501] Music[w301] Books[a40]" },
        { "the current display only", thisDisplay,
            "Mail*[w101 w102] Notes[w201] Atlas[w701] Zed[w601] Maps[w501] Music[w301] Books[a40]" },
        { "no minimised windows, hidden apps or windowless apps", strict,
            "Mail*[w101 w104 w103] Notes[w201] Atlas[w701] Zed[w601]" },
    };
    for (const auto& row : rows)
        EXPECT_EQ(describe(groups(apps, windows, recency, row.options, Rect { 0, 0, 1440, 900 })), row.expected)
            << row.name;
}

TEST(SwitcherLogicTest, FrontmostAppLeadsEvenWithOnlyMinimisedWindows)
{
    std::vector<AppSnapshot> apps { { 1, "Mail", "", false, true }, { 2, "Notes", "", false, false } };
    std::vector<WindowEntry> windows { { 11, 1, "Mail", "Inbox", {}, true, true }, { 21, 2, "Notes", "Todo", {}, false, true } };
    EXPECT_EQ(describe(groups(apps, windows, { 1, 2 }, SwitcherOptions {})), "Mail*[w11] Notes[w21]");
}

struct SecondPressRow {
    const char* name;
    SwitcherAction action;
    std::size_t windows;
    bool expected;
};

TEST(SwitcherLogicTest, SecondPress)
{
    const SecondPressRow rows[] = {
        { "closing a window acts at once", SwitcherAction::close, 3, false },
        { "quitting an app of one window acts at once", SwitcherAction::quit, 1, false },
        { "quitting an app of several windows asks twice", SwitcherAction::quit, 2, true },
    };
    for (const auto& row : rows) {
        auto app = windowGroup(1, "A", row.windows);
        EXPECT_EQ(needsSecondPress(row.action, app.items.front(), app), row.expected) << row.name;
    }
    SwitcherGroup windowless { 2, "B", false, { { std::nullopt, 2, "B", "" } } };
    EXPECT_FALSE(needsSecondPress(SwitcherAction::quit, windowless.items.front(), windowless));
}

} // namespace
} // namespace quillmar
