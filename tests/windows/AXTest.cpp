#include <gtest/gtest.h>

#include <map>
#include <string>

#include "core/windows/AX.h"
#include "tests/windows/FakeWindowWorld.h"

namespace quillmar {
namespace {

// An element tree with free-form attributes: element id to attribute name to value.
class TreeAccessibility final : public Accessibility {
public:
    std::map<std::uint64_t, std::map<std::string, AXValue, std::less<>>> elements;

    bool isTrusted() const override { return true; }
    AXElement applicationElement(std::int32_t pid) override { return { static_cast<std::uint64_t>(pid) }; }
    void setMessagingTimeout(AXElement, Duration) override { }
    std::optional<std::int32_t> processID(AXElement) const override { return std::nullopt; }
    std::optional<AXValue> attribute(AXElement element, std::string_view name) const override
    {
        auto found = elements.find(element.id);
        if (found == elements.end())
            return std::nullopt;
        auto value = found->second.find(name);
        if (value == found->second.end())
            return std::nullopt;
        return value->second;
    }
    bool setAttribute(AXElement, std::string_view, const AXValue&) override { return false; }
    std::optional<bool> isAttributeSettable(AXElement, std::string_view) const override { return std::nullopt; }
    bool performAction(AXElement, std::string_view) override { return false; }
    bool canReadWindowNumbers() const override { return false; }
    std::optional<std::uint32_t> windowNumber(AXElement) const override { return std::nullopt; }
};

constexpr std::int32_t appId = 1;
const std::string window = "AXWindow";

TEST(AXWindowContaining, FindsTheWindowThatHoldsAnElement)
{
    struct Row {
        const char* name;
        std::map<std::uint64_t, std::map<std::string, AXValue, std::less<>>> tree;
        std::optional<AXElement> expected;
    };
    const Row rows[] = {
        { "TheElementIsAWindow", { { 10, { { "AXRole", window } } } }, AXElement { 10 } },
        { "ItsWindowAttribute", { { 10, { { "AXRole", std::string("AXButton") }, { "AXWindow", AXElement { 20 } } } } },
            AXElement { 20 } },
        { "ItsTopLevelWindow",
            { { 10, { { "AXTopLevelUIElement", AXElement { 30 } } } }, { 30, { { "AXRole", window } } } },
            AXElement { 30 } },
        { "ATopLevelElementThatIsNoWindowIsPassedOver",
            { { 10, { { "AXTopLevelUIElement", AXElement { 30 } }, { "AXParent", AXElement { 11 } } } },
                { 30, { { "AXRole", std::string("AXSheet") } } }, { 11, { { "AXParent", AXElement { 12 } } } },
                { 12, { { "AXRole", window } } } },
            AXElement { 12 } },
        { "ClimbingStopsAtTheApplication",
            { { 10, { { "AXParent", AXElement { 11 } } } }, { 11, { { "AXParent", AXElement { appId } } } },
                { appId, { { "AXRole", window } } } },
            std::nullopt },
        { "NoParent", { { 10, { { "AXRole", std::string("AXButton") } } } }, std::nullopt },
        { "AParentCycleEnds", { { 10, { { "AXParent", AXElement { 11 } } } }, { 11, { { "AXParent", AXElement { 10 } } } } },
            std::nullopt },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TreeAccessibility tree;
        tree.elements = row.tree;
        AX ax(tree);
        EXPECT_EQ(ax.window(AXElement { 10 }, appId), row.expected);
    }
}

TEST(AXReaders, ReturnNothingForAValueOfAnotherType)
{
    TreeAccessibility tree;
    tree.elements[5] = { { "AXTitle", 3.0 }, { "AXMinimized", 1.0 }, { "AXPosition", Point { 1, 2 } } };
    AX ax(tree);
    EXPECT_EQ(ax.string(AXElement { 5 }, "AXTitle"), std::nullopt);
    EXPECT_EQ(ax.boolean(AXElement { 5 }, "AXMinimized"), true);
    EXPECT_EQ(ax.point(AXElement { 5 }, "AXPosition"), (Point { 1, 2 }));
    EXPECT_EQ(ax.size(AXElement { 5 }, "AXPosition"), std::nullopt);
    EXPECT_EQ(ax.frame(AXElement { 5 }), std::nullopt); // no size
    EXPECT_EQ(ax.string(AXElement {}, "AXTitle"), std::nullopt);
}

class AXWindowLookupTest : public testing::Test {
protected:
    AXWindowLookupTest()
    {
        world.addApp({ .pid = 9, .name = "Viewer" });
        world.addWindow({ .number = 1, .pid = 9, .frame = { 0, 0, 500, 400 } });
        world.addWindow({ .number = 2, .pid = 9, .frame = { 100, 100, 500, 400 } });
        world.addWindow({ .number = 3, .pid = 8, .frame = { 100, 100, 500, 400 } });
    }
    FakeWindowWorld world;
    AX ax { world };
};

TEST_F(AXWindowLookupTest, FindsTheWindowByItsNumber)
{
    EXPECT_EQ(ax.window(9, 2, std::nullopt), FakeWindowWorld::windowElement(2));
    EXPECT_EQ(ax.window(9, 3, std::nullopt), std::nullopt); // another process's window
    EXPECT_EQ(ax.window(9, 4, Rect { 0, 0, 500, 400 }), std::nullopt);
    EXPECT_EQ(world.timeouts[FakeWindowWorld::appElement(9).id], seconds(0.35));
}

TEST_F(AXWindowLookupTest, FallsBackToTheNearestFrameWithoutWindowNumbers)
{
    world.windowNumbersReadable = false;
    EXPECT_EQ(ax.window(9, 2, Rect { 104, 96, 504, 396 }), FakeWindowWorld::windowElement(2));
    EXPECT_EQ(ax.window(9, 2, Rect { 2, 0, 500, 400 }), FakeWindowWorld::windowElement(1));
    EXPECT_EQ(ax.window(9, 2, Rect { 117, 100, 500, 400 }), std::nullopt); // 17 points off
    EXPECT_EQ(ax.window(9, 2, std::nullopt), std::nullopt);
}

} // namespace
} // namespace quillmar
