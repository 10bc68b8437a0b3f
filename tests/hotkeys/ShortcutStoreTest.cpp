#include <gtest/gtest.h>

#include "core/hotkeys/ShortcutStore.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"

namespace quillmar {
namespace {

const Shortcut controlOptionB { 11, 6144, "B" };

class ShortcutStoreTest : public testing::Test {
protected:
    // A fresh Settings over `saved`, as after a restart.
    void restart(nlohmann::json saved)
    {
        m_store.reset();
        auto backend = std::make_unique<MemorySettingsBackend>(std::move(saved));
        m_backend = backend.get();
        m_settings = std::make_unique<Settings>(std::move(backend));
        m_store = std::make_unique<ShortcutStore>(*m_settings, m_runtime.mainQueue());
        m_store->setChangeCallback([this] { ++m_changes; });
    }

    // Restarts over whatever the current store saved.
    void restartFromSaved() { restart(m_backend->values()); }

    nlohmann::json savedBindings() const { return m_backend->values().value("shortcuts.bindings", nlohmann::json()); }

    ShortcutStore& store() { return *m_store; }

    VirtualRuntime m_runtime;
    MemorySettingsBackend* m_backend = nullptr;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<ShortcutStore> m_store;
    int m_changes = 0;
};

TEST_F(ShortcutStoreTest, StartsWithTheDefaultsWithoutSavingWhenNothingUsableIsSaved)
{
    for (auto saved : { nlohmann::json::object(), nlohmann::json { { "shortcuts.bindings", "clipboardPicker" } } }) {
        restart(saved);
        for (auto action : allShortcutActions())
            EXPECT_EQ(store().shortcut(action), defaultShortcut(action)) << rawValue(action) << " " << saved;
        EXPECT_EQ(m_backend->saveCount(), 0);
    }
}

TEST_F(ShortcutStoreTest, SavedBindingsOverlayTheDefaults)
{
    restart({ { "shortcuts.bindings",
        {
            { "clipboardPicker", controlOptionB.toJson() },
            { "keepAwake", { { "keyCode", 40 }, { "modifiers", 6144 }, { "keyLabel", "K" } } },
            { "colorPicker", nullptr },
            { "noSuchAction", controlOptionB.toJson() },
            { "textGrab", { { "keyCode", "31" } } },
        } } });
    EXPECT_EQ(store().shortcut(ShortcutAction::clipboardPicker), controlOptionB);
    EXPECT_EQ(store().shortcut(ShortcutAction::keepAwake), (Shortcut { 40, 6144, "K" }));
    EXPECT_EQ(store().shortcut(ShortcutAction::colorPicker), std::nullopt) << "null clears a default";
    EXPECT_EQ(store().shortcut(ShortcutAction::textGrab), defaultShortcut(ShortcutAction::textGrab))
        << "a malformed record leaves the default";
    EXPECT_EQ(store().shortcut(ShortcutAction::plainPaste), defaultShortcut(ShortcutAction::plainPaste));
}

TEST_F(ShortcutStoreTest, ClearedDefaultSurvivesARestart)
{
    restart(nlohmann::json::object());
    store().set(std::nullopt, ShortcutAction::clipboardPicker);
    EXPECT_TRUE(savedBindings().at("clipboardPicker").is_null());
    restartFromSaved();
    EXPECT_EQ(store().shortcut(ShortcutAction::clipboardPicker), std::nullopt);
    EXPECT_EQ(store().shortcut(ShortcutAction::plainPaste), defaultShortcut(ShortcutAction::plainPaste));
}

TEST_F(ShortcutStoreTest, ChangedBindingSurvivesARestartAndSavesTheWholeDictionary)
{
    restart(nlohmann::json::object());
    store().set(controlOptionB, ShortcutAction::radialMenu);
    EXPECT_EQ(m_changes, 1);
    auto saved = savedBindings();
    EXPECT_EQ(saved.at("radialMenu"), controlOptionB.toJson());
    EXPECT_EQ(saved.at("togglePanel"), defaultShortcut(ShortcutAction::togglePanel)->toJson());
    EXPECT_FALSE(saved.contains("keepAwake")) << "unbound without a default: nothing to remember";
    restartFromSaved();
    EXPECT_EQ(store().shortcut(ShortcutAction::radialMenu), controlOptionB);
    EXPECT_EQ(store().bindings().size(), 29u);
}

TEST_F(ShortcutStoreTest, SettingWhatIsAlreadyThereDoesNothing)
{
    restart(nlohmann::json::object());
    store().set(defaultShortcut(ShortcutAction::togglePanel), ShortcutAction::togglePanel);
    store().set(std::nullopt, ShortcutAction::keepAwake);
    EXPECT_EQ(m_changes, 0);
    EXPECT_EQ(m_backend->saveCount(), 0);
    store().set(Shortcut { 49, 6144, "Spacebar" }, ShortcutAction::togglePanel);
    EXPECT_EQ(m_changes, 1) << "a new label is a change";
}

TEST_F(ShortcutStoreTest, ConflictNamesTheFirstOtherActionWithTheCombination)
{
    restart(nlohmann::json::object());
    Shortcut controlOptionV { 9, 6144, "V" };
    EXPECT_EQ(store().conflict(controlOptionV, std::nullopt), ShortcutAction::clipboardPicker);
    EXPECT_EQ(store().conflict(controlOptionV, ShortcutAction::clipboardPicker), std::nullopt);
    EXPECT_EQ(store().conflict(Shortcut { 9, 6656, "V" }, ShortcutAction::clipboardPicker), ShortcutAction::plainPaste);
    EXPECT_EQ(store().conflict(Shortcut { 9, 6144, "v" }, std::nullopt), ShortcutAction::clipboardPicker)
        << "the label does not make another hot key";
    EXPECT_EQ(store().conflict(controlOptionB, std::nullopt), std::nullopt);

    store().set(controlOptionV, ShortcutAction::shelf);
    EXPECT_EQ(store().conflict(controlOptionV, ShortcutAction::shelf), ShortcutAction::clipboardPicker);
    EXPECT_EQ(store().conflict(controlOptionV, ShortcutAction::clipboardPicker), ShortcutAction::shelf);
}

TEST_F(ShortcutStoreTest, ResetAllRestoresDefaultsSavesAndFires)
{
    restart(nlohmann::json::object());
    store().set(std::nullopt, ShortcutAction::togglePanel);
    store().set(controlOptionB, ShortcutAction::shelf);
    m_changes = 0;
    store().resetAll();
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(store().shortcut(ShortcutAction::togglePanel), defaultShortcut(ShortcutAction::togglePanel));
    EXPECT_EQ(store().shortcut(ShortcutAction::shelf), std::nullopt);
    restartFromSaved();
    EXPECT_EQ(store().bindings().size(), 28u);
    EXPECT_EQ(store().shortcut(ShortcutAction::togglePanel), defaultShortcut(ShortcutAction::togglePanel));
}

TEST_F(ShortcutStoreTest, CallbackMayReplaceItselfWhileRunning)
{
    restart(nlohmann::json::object());
    int replaced = 0;
    store().setChangeCallback([this, &replaced] { store().setChangeCallback([&replaced] { ++replaced; }); });
    store().set(controlOptionB, ShortcutAction::shelf);
    store().set(std::nullopt, ShortcutAction::shelf);
    EXPECT_EQ(replaced, 1);
}

TEST(ShortcutStoreCodec, EncodeThenDecodeGivesTheBindingsBack)
{
    std::map<ShortcutAction, Shortcut> bindings { { ShortcutAction::shelf, controlOptionB } };
    auto decoded = ShortcutStore::decodeSaved(ShortcutStore::encodeSaved(bindings));
    EXPECT_EQ(decoded.size(), 29u) << "the shelf binding and a null for each of the 28 defaults";
    EXPECT_EQ(decoded.at(ShortcutAction::shelf), controlOptionB);
    EXPECT_EQ(decoded.at(ShortcutAction::togglePanel), std::nullopt);
}

TEST(ShortcutStoreCodec, DecodeNeverThrowsOnOddInput)
{
    for (const char* text : { "null", "[]", "42", R"("togglePanel")", R"({"togglePanel": 1})", R"({"togglePanel": []})",
             R"({"togglePanel": {"keyCode": 1.5e300, "modifiers": 0, "keyLabel": "A"}})",
             R"({"": null, "togglePanel": {"keyCode": -5, "modifiers": 0, "keyLabel": "A"}})" }) {
        auto json = nlohmann::json::parse(text);
        EXPECT_NO_THROW(EXPECT_TRUE(ShortcutStore::decodeSaved(json).empty()) << text);
    }
}

TEST(ShortcutStoreDeathTest, UseOffTheMainThreadStopsTheProcess)
{
    VirtualRuntime runtime;
    Settings settings(std::make_unique<MemorySettingsBackend>());
    ShortcutStore store(settings, runtime.mainQueue());
    auto queue = runtime.makeSerialQueue("com.quillmar.test.hotkeys");
    EXPECT_DEATH(
        {
            queue->post([&store] { store.set(std::nullopt, ShortcutAction::togglePanel); });
            runtime.runUntilIdle();
        },
        "ShortcutStore used off the main thread");
    EXPECT_DEATH(
        {
            queue->post([&store] { (void)store.shortcut(ShortcutAction::togglePanel); });
            runtime.runUntilIdle();
        },
        "ShortcutStore used off the main thread");
}

} // namespace
} // namespace quillmar
