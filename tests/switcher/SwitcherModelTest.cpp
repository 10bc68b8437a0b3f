#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/runtime/VirtualRuntime.h"
#include "core/switcher/SwitcherModel.h"
#include "tests/switcher/SwitcherTestSupport.h"

namespace quillmar {
namespace {

class SwitcherModelTest : public testing::Test {
protected:
    VirtualRuntime runtime;
    SwitcherModel model { runtime.mainQueue() };
};

TEST_F(SwitcherModelTest, QueryHoldsAtMost63CodePoints)
{
    std::string text(62, 'x');
    EXPECT_TRUE(model.appendToQuery(text));
    EXPECT_FALSE(model.appendToQuery("éé")) << "two more would make 64";
    EXPECT_TRUE(model.appendToQuery("é"));
    EXPECT_FALSE(model.appendToQuery("y"));
    EXPECT_TRUE(model.dropLastQueryCharacter());
    EXPECT_EQ(model.query(), text) << "the whole two-byte character goes";
    EXPECT_FALSE(model.appendToQuery(""));
    EXPECT_TRUE(model.clearQuery());
    EXPECT_FALSE(model.clearQuery());
    EXPECT_FALSE(model.dropLastQueryCharacter());
}

TEST_F(SwitcherModelTest, RefilterKeepsTheSelectedCardWhenItIsStillShown)
{
    model.setGroups(groupsOfSizes({ 2, 3 })); // A[w11 w12] B[w21 w22 w23]
    model.select(3);
    model.appendToQuery("b 2");
    model.refilter();
    EXPECT_EQ(describe(model.groups()), "B[w22]");
    EXPECT_EQ(model.selectedItem()->id(), "w22");
    model.clearQuery();
    model.appendToQuery("a");
    model.refilter();
    EXPECT_EQ(model.selectedIndex(), 0u) << "the selected card is filtered out: the first card";
    model.select(9);
    EXPECT_EQ(model.selectedIndex(), std::nullopt);
}

TEST_F(SwitcherModelTest, RemovingTheSelectedCardSelectsTheOneInItsPlace)
{
    model.setGroups(groupsOfSizes({ 2, 1, 2 }));
    model.select(2); // B's only card
    model.removeItems({ "w21" });
    EXPECT_EQ(describe(model.groups()), "A[w11 w12] C[w31 w32]");
    EXPECT_EQ(model.selectedItem()->id(), "w31");
    model.select(3);
    model.removeItems({ "w31", "w32" });
    EXPECT_EQ(model.selectedIndex(), 1u) << "held to the last card";
}

struct ScreenRow {
    const char* name;
    Size screen;
    bool previews;
    double maxWidth;
    double maxHeight;
    std::size_t cardLimit;
};

TEST_F(SwitcherModelTest, PanelSizeAndCardLimitFollowTheScreen)
{
    const ScreenRow rows[] = {
        // 1277 wide fits 5 columns of 220 + 12, 765 tall fits 4 rows of 170 + 12.
        { "laptop with previews", { 1440, 900 }, true, 1277, 765, 20 },
        { "laptop with icons", { 1440, 900 }, false, 1277, 765, 9 * 5 },
        { "tiny screen still shows one card", { 100, 100 }, true, 44, 85, 1 },
    };
    for (const auto& row : rows) {
        SwitcherOptions options;
        options.previews = row.previews;
        model.setPreferences(options);
        model.setScreen(row.screen);
        EXPECT_DOUBLE_EQ(model.maxWidth(), row.maxWidth) << row.name;
        EXPECT_DOUBLE_EQ(model.maxHeight(), row.maxHeight) << row.name;
        EXPECT_EQ(model.cardLimit(), row.cardLimit) << row.name;
    }
}

TEST_F(SwitcherModelTest, GroupsAreCutToTheCardLimit)
{
    model.setScreen(Size { 100, 100 });
    model.setGroups(groupsOfSizes({ 3, 2 }));
    EXPECT_EQ(describe(model.groups()), "A[w11]");
    EXPECT_EQ(describe(model.unfilteredGroups()), "A[w11 w12 w13] B[w21 w22]");
}

TEST_F(SwitcherModelTest, ObserversHearChanges)
{
    int changes = 0;
    auto id = model.observe([&] { ++changes; });
    model.setGroups(groupsOfSizes({ 2 }));
    model.select(1);
    model.select(1);
    EXPECT_EQ(changes, 2);
    model.removeObserver(id);
    model.markClosing("w11", true);
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace quillmar
