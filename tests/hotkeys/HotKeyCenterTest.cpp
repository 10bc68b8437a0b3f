#include <gtest/gtest.h>

#include <thread>

#include "core/hotkeys/HotKeyCenter.h"
#include "core/runtime/VirtualRuntime.h"
#include "platform/null/NullHotKeyPorts.h"
#include "tests/hotkeys/FakeHotKeyRegistrar.h"

namespace quillmar {
namespace {

const Shortcut controlOptionSpace { 49, 6144, "Space" };
const Shortcut controlOptionV { 9, 6144, "V" };
const Shortcut optionSpace { 49, 2048, "Space" };

const std::vector<std::pair<ShortcutAction, Shortcut>> threePairs {
    { ShortcutAction::togglePanel, controlOptionSpace },
    { ShortcutAction::clipboardPicker, controlOptionV },
    { ShortcutAction::commandBar, optionSpace },
};

class HotKeyCenterTest : public testing::Test {
protected:
    HotKeyCenterTest()
    {
        m_center.setHandler([this](ShortcutAction action) { m_pressed.push_back(action); });
    }

    VirtualRuntime m_runtime;
    FakeHotKeyRegistrar m_registrar;
    HotKeyCenter m_center { m_registrar, m_runtime.mainQueue() };
    std::vector<ShortcutAction> m_pressed;
};

TEST_F(HotKeyCenterTest, NumbersPairsFromOneUnderTheApplicationSignature)
{
    EXPECT_EQ(HotKeyCenter::signature, 0x514C4D52u) << "'Q' 'L' 'M' 'R', big-endian";
    m_center.registerShortcuts(threePairs);
    ASSERT_EQ(m_registrar.active.size(), 3u);
    for (std::uint32_t index = 0; index < 3; ++index) {
        const auto& registration = m_registrar.active[index];
        EXPECT_EQ(registration.id, (HotKeyID { HotKeyCenter::signature, index + 1 }));
        EXPECT_EQ(registration.keyCode, threePairs[index].second.keyCode);
        EXPECT_EQ(registration.modifiers, threePairs[index].second.modifiers);
        EXPECT_EQ(m_center.action(index + 1), threePairs[index].first);
    }
    EXPECT_EQ(m_center.action(0), std::nullopt);
    EXPECT_EQ(m_center.registeredCount(), 3u);
    EXPECT_TRUE(m_center.isRegistered(ShortcutAction::commandBar));
    EXPECT_FALSE(m_center.isRegistered(ShortcutAction::plainPaste));
}

TEST_F(HotKeyCenterTest, RegisteringTheSameListTwiceKeepsOneRegistrationPerPair)
{
    m_center.registerShortcuts(threePairs);
    m_center.registerShortcuts(threePairs);
    ASSERT_EQ(m_registrar.active.size(), 3u);
    EXPECT_EQ(m_registrar.unregisterCount, 3);
    for (std::uint32_t index = 0; index < 3; ++index)
        EXPECT_EQ(m_registrar.active[index].id.number, index + 1);
    EXPECT_EQ(m_center.registeredCount(), 3u);
}

TEST_F(HotKeyCenterTest, RefusedPairIsSkippedAndLeavesAGap)
{
    m_registrar.taken.insert({ controlOptionV.keyCode, controlOptionV.modifiers });
    m_center.registerShortcuts(threePairs);
    ASSERT_EQ(m_registrar.active.size(), 2u);
    EXPECT_EQ(m_registrar.active[0].id.number, 1u);
    EXPECT_EQ(m_registrar.active[1].id.number, 3u);
    EXPECT_FALSE(m_center.isRegistered(ShortcutAction::clipboardPicker));
    EXPECT_EQ(m_center.action(2), std::nullopt);
    EXPECT_EQ(m_center.action(3), ShortcutAction::commandBar);
}

TEST_F(HotKeyCenterTest, UnregisterAllReleasesEverything)
{
    m_center.registerShortcuts(threePairs);
    m_center.unregisterAll();
    EXPECT_TRUE(m_registrar.active.empty());
    EXPECT_EQ(m_center.registeredCount(), 0u);
    EXPECT_EQ(m_center.action(1), std::nullopt);
    m_center.unregisterAll();
    EXPECT_EQ(m_registrar.unregisterCount, 3) << "nothing is released twice";
}

TEST_F(HotKeyCenterTest, PressRunsTheActionOnTheMainQueueOnly)
{
    m_center.registerShortcuts(threePairs);
    m_registrar.press({ HotKeyCenter::signature, 3 });
    EXPECT_TRUE(m_pressed.empty()) << "the handler waits for the main queue";
    m_runtime.runUntilIdle();
    EXPECT_EQ(m_pressed, std::vector { ShortcutAction::commandBar });
}

TEST_F(HotKeyCenterTest, PressFromAnotherThreadHopsToTheMainQueue)
{
    m_center.registerShortcuts(threePairs);
    std::thread system([this] { m_registrar.press({ HotKeyCenter::signature, 2 }); });
    system.join();
    EXPECT_TRUE(m_pressed.empty());
    m_runtime.runUntilIdle();
    EXPECT_EQ(m_pressed, std::vector { ShortcutAction::clipboardPicker });
}

TEST_F(HotKeyCenterTest, UnknownNumbersAndForeignSignaturesAreIgnored)
{
    m_center.registerShortcuts(threePairs);
    m_registrar.press({ HotKeyCenter::signature, 0 });
    m_registrar.press({ HotKeyCenter::signature, 4 });
    m_registrar.press({ 0x41424344, 1 });
    m_runtime.runUntilIdle();
    EXPECT_TRUE(m_pressed.empty());
}

TEST_F(HotKeyCenterTest, PressLooksTheNumberUpWhenItRunsNotWhenItArrives)
{
    m_center.registerShortcuts(threePairs);
    m_registrar.press({ HotKeyCenter::signature, 3 });
    m_center.registerShortcuts({ { ShortcutAction::togglePanel, controlOptionSpace } });
    m_runtime.runUntilIdle();
    EXPECT_TRUE(m_pressed.empty()) << "number 3 went away before the press reached the main queue";
}

TEST(HotKeyCenterLifetime, InstallsOneHandlerAndRemovesItWithEveryHotKey)
{
    VirtualRuntime runtime;
    FakeHotKeyRegistrar registrar;
    std::vector<ShortcutAction> pressed;
    {
        HotKeyCenter center(registrar, runtime.mainQueue());
        center.setHandler([&pressed](ShortcutAction action) { pressed.push_back(action); });
        center.registerShortcuts(threePairs);
        registrar.press({ HotKeyCenter::signature, 1 });
        EXPECT_EQ(registrar.handlerInstalls, 1);
    }
    EXPECT_TRUE(registrar.active.empty());
    EXPECT_FALSE(registrar.hasHandler());
    runtime.runUntilIdle();
    EXPECT_TRUE(pressed.empty()) << "a press still queued when the center went away is dropped";
}

TEST(HotKeyCenterNullRegistrar, RegistersNothing)
{
    VirtualRuntime runtime;
    NullHotKeyRegistrar registrar;
    HotKeyCenter center(registrar, runtime.mainQueue());
    center.registerShortcuts(threePairs);
    EXPECT_EQ(center.registeredCount(), 0u);
}

TEST(HotKeyCenterDeathTest, UseOffTheMainThreadStopsTheProcess)
{
    VirtualRuntime runtime;
    FakeHotKeyRegistrar registrar;
    HotKeyCenter center(registrar, runtime.mainQueue());
    auto queue = runtime.makeSerialQueue("com.quillmar.test.hotkeys");
    EXPECT_DEATH(
        {
            queue->post([&center] { center.registerShortcuts(threePairs); });
            runtime.runUntilIdle();
        },
        "HotKeyCenter used off the main thread");
}

} // namespace
} // namespace quillmar
