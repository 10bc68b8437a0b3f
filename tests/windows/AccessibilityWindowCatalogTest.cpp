#include <gtest/gtest.h>

#include "core/runtime/VirtualRuntime.h"
#include "core/windows/AccessibilityWindowActions.h"
#include "core/windows/AccessibilityWindowCatalog.h"
#include "tests/windows/FakeWindowWorld.h"

namespace quillmar {
namespace {

class WindowCatalogTest : public testing::Test {
protected:
    WindowCatalogTest()
    {
        world.addApp({ .pid = 100, .name = "Editor", .bundleID = "com.example.editor" });
        world.addApp({ .pid = 200, .name = "Mail", .bundleID = "com.example.mail" });
        world.frontmost = 100;
        world.addWindow({ .number = 11, .pid = 100, .title = "notes.txt", .frame = { 0, 25, 800, 600 } });
        world.addWindow({ .number = 12, .pid = 100, .title = "draft.txt", .frame = { 50, 50, 600, 400 }, .minimized = true });
        world.addWindow({ .number = 13, .pid = 100, .title = "Find", .frame = { 90, 90, 300, 200 },
            .subrole = "AXFloatingWindow" });
        world.addWindow({ .number = 14, .pid = 100, .title = "elsewhere.txt", .frame = { 0, 25, 500, 400 },
            .onCurrentSpace = false });
        world.addWindow({ .number = 15, .pid = 100, .title = "", .frame = { 0, 25, 500, 400 }, .onCurrentSpace = false });
        world.addWindow({ .number = 21, .pid = 200, .title = "Inbox", .frame = { 300, 100, 900, 700 } });
        world.addWindow({ .number = 22, .pid = 200, .title = "Badge", .frame = { 300, 100, 900, 700 }, .layer = 3 });
        world.addWindow({ .number = 31, .pid = 300, .title = "Unlisted app", .frame = { 0, 0, 900, 700 } });
    }

    std::vector<std::uint32_t> numbers(WindowCatalogOptions options = {})
    {
        std::vector<std::uint32_t> found;
        for (const auto& entry : catalog.windows(catalog.runningApps(), options))
            found.push_back(entry.windowNumber);
        return found;
    }

    VirtualRuntime runtime;
    FakeWindowWorld world;
    AccessibilityWindowCatalog catalog { world, world, world };
    AccessibilityWindowActions actions { runtime, world, world };
};

TEST_F(WindowCatalogTest, JoinsTheWindowListWithTheStandardAccessibilityWindows)
{
    auto entries = catalog.windows(catalog.runningApps(), {});
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[0], (WindowEntry { 11, 100, "Editor", "notes.txt", { 0, 25, 800, 600 }, false, true }));
    EXPECT_EQ(entries[1], (WindowEntry { 12, 100, "Editor", "draft.txt", { 50, 50, 600, 400 }, true, true }));
    EXPECT_EQ(entries[2], (WindowEntry { 14, 100, "Editor", "elsewhere.txt", { 0, 25, 500, 400 }, false, false }));
    EXPECT_EQ(entries[3].windowNumber, 21u);
}

TEST_F(WindowCatalogTest, LeavesOutWhatTheOptionsExclude)
{
    struct Row {
        const char* name;
        WindowCatalogOptions options;
        std::vector<std::uint32_t> expected;
    };
    const Row rows[] = {
        { "Everything", { true, true }, { 11, 12, 14, 21 } },
        { "NoMinimised", { false, true }, { 11, 14, 21 } },
        { "CurrentSpaceOnly", { true, false }, { 11, 12, 21 } },
        { "Neither", { false, false }, { 11, 21 } },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(numbers(row.options), row.expected);
    }
}

TEST_F(WindowCatalogTest, MatchesByFrameWhereWindowNumbersCannotBeRead)
{
    world.windowNumbersReadable = false;
    EXPECT_EQ(numbers(), (std::vector<std::uint32_t> { 11, 12, 14, 21 }));
}

TEST_F(WindowCatalogTest, ListsOnlyStandardWindowsOfAProcess)
{
    EXPECT_EQ(catalog.standardWindows(100),
        (std::vector<AXElement> { FakeWindowWorld::windowElement(11), FakeWindowWorld::windowElement(12) }));
    EXPECT_TRUE(catalog.standardWindows(999).empty());
}

TEST_F(WindowCatalogTest, FocusRaisesTheWindowAndActivatesItsApp)
{
    auto entries = catalog.windows(catalog.runningApps(), {});
    EXPECT_TRUE(actions.focus(entries[3]));
    EXPECT_EQ(world.actions.back(), (std::pair { FakeWindowWorld::windowElement(21), std::string("AXRaise") }));
    EXPECT_EQ(world.activations.back(), (std::pair { std::int32_t { 200 }, std::optional<std::uint32_t> { 21 } }));

    EXPECT_TRUE(actions.focus(entries[1])); // minimised: restored first
    EXPECT_FALSE(world.window(12)->minimized);
}

TEST_F(WindowCatalogTest, ClosePressesTheCloseButton)
{
    auto entries = catalog.windows(catalog.runningApps(), {});
    EXPECT_TRUE(actions.close(entries[0]));
    EXPECT_EQ(world.window(11), nullptr);
    EXPECT_FALSE(actions.close(entries[0])); // already gone
}

TEST_F(WindowCatalogTest, SetMinimizedAnswersOnTheMainQueue)
{
    auto entries = catalog.windows(catalog.runningApps(), {});
    std::optional<bool> answer;
    actions.setMinimized(entries[0], true, [&](bool done) { answer = done; });
    EXPECT_FALSE(answer);
    runtime.runUntilIdle();
    EXPECT_EQ(answer, true);
    EXPECT_TRUE(world.window(11)->minimized);
}

TEST_F(WindowCatalogTest, ActionsFailWithoutTrust)
{
    auto entries = catalog.windows(catalog.runningApps(), {});
    world.trusted = false;
    EXPECT_FALSE(actions.focus(entries[0]));
    EXPECT_FALSE(actions.close(entries[0]));
    std::optional<bool> answer;
    actions.setMinimized(entries[0], true, [&](bool done) { answer = done; });
    runtime.runUntilIdle();
    EXPECT_EQ(answer, false);
    EXPECT_TRUE(actions.activateApp(200)); // activation needs no accessibility
}

} // namespace
} // namespace quillmar
