#include <gtest/gtest.h>

#include <fstream>

#include "core/base/Files.h"
#include "core/base/Utf8.h"
#include "core/eventtap/EventTap.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/shell/AppServices.h"
#include "core/snippets/Snippets.h"
#include "platform/null/NullEventTapPorts.h"
#include "platform/null/NullHotKeyPorts.h"
#include "tests/clipboard/ClipboardFakes.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

constexpr std::uint32_t letterKey = 0;
constexpr std::uint32_t spaceKey = 49;

// Each key types what the test says it does.
class FakeKeyboard final : public KeyboardLayout {
public:
    std::string characters(const InputEvent&) override { return next; }
    std::string next;
};

class FakeTextFocus final : public TextFocus {
public:
    bool isSecureInputOn() const override { return secureInput; }
    FocusedField focusedField() const override { return field; }
    bool isOnScreenKeyboard(InputEvent::Location location) const override { return location.x >= 1000.0; }

    bool secureInput = false;
    FocusedField field = FocusedField::editableText;
};

class SnippetsTest : public testing::Test {
protected:
    SnippetsTest()
        : m_settings(std::make_unique<Settings>(std::make_unique<MemorySettingsBackend>()))
    {
        m_front.front = AppIdentity { "com.example.mail", "Mail" };
        remake();
    }

    void remake()
    {
        m_snippets.reset();
        m_snippets = std::make_unique<Snippets>(m_runtime, *m_settings, file(),
            SnippetPorts { m_tap, m_keyboard, m_focus, m_front, m_pasteboard, m_keys, m_notices });
    }

    std::filesystem::path file() const { return m_folder.path() / "Quillmar" / "Snippets.json"; }

    TextSnippet make(std::string trigger, std::string text, bool immediate = false)
    {
        TextSnippet snippet;
        snippet.trigger = std::move(trigger);
        snippet.text = std::move(text);
        snippet.expandsImmediately = immediate;
        return snippet;
    }

    void key(std::uint32_t keyCode, std::string characters, std::uint64_t flags = 0)
    {
        m_keyboard.next = std::move(characters);
        InputEvent event;
        event.type = EventType::keyDown;
        event.keyCode = keyCode;
        event.flags = flags;
        m_tap.runListeners(event);
    }

    void type(std::string_view text)
    {
        for (char32_t codePoint : decodeUtf8(text))
            key(codePoint == U' ' ? spaceKey : letterKey, encodeUtf8(std::u32string(1, codePoint)));
    }

    void click(double x)
    {
        InputEvent event;
        event.type = EventType::leftMouseDown;
        event.location = { x, 10.0 };
        m_tap.runListeners(event);
    }

    std::size_t deletes() const
    {
        return static_cast<std::size_t>(std::count(m_keys.posted.begin(), m_keys.posted.end(),
            FakeKeystrokes::Key { KeyCode::deleteBackward, 0 }));
    }

    VirtualRuntime m_runtime;
    TemporaryFolder m_folder;
    std::unique_ptr<Settings> m_settings;
    NullEventTapSource m_source;
    EventTap m_tap { m_runtime, m_source };
    FakeKeyboard m_keyboard;
    FakeTextFocus m_focus;
    FakeFrontApplications m_front;
    FakePasteboard m_pasteboard { m_runtime.clock() };
    FakeKeystrokes m_keys;
    FakeNotices m_notices;
    std::unique_ptr<Snippets> m_snippets;
};

TEST_F(SnippetsTest, EnablingRegistersOnTheSharedTap)
{
    EXPECT_FALSE(m_tap.isRegistered("snippets.typing"));
    m_snippets->setEnabled(true);
    EXPECT_TRUE(m_tap.isRegistered("snippets.typing"));
    m_snippets->setEnabled(false);
    EXPECT_FALSE(m_tap.isRegistered("snippets.typing"));
}

TEST_F(SnippetsTest, ASpaceTerminatedTriggerIsErasedWithItsSpaceAndExpanded)
{
    ASSERT_TRUE(m_snippets->add(make(";sig", "Best,{cursor}\nAnna")));
    m_snippets->setEnabled(true);
    m_pasteboard.copyText("what the user had");
    type("hi ;sig");
    EXPECT_TRUE(m_keys.posted.empty());
    type(" ");
    EXPECT_TRUE(m_keys.posted.empty()) << "expansion runs after the tap's callback, on the main queue";
    m_runtime.runUntilIdle();

    std::vector<FakeKeystrokes::Key> expected(5, { KeyCode::deleteBackward, 0 });
    expected.push_back({ KeyCode::v, EventFlags::command });
    expected.insert(expected.end(), 5, { KeyCode::leftArrow, 0 }); // "\nAnna" follows the cursor
    EXPECT_EQ(m_keys.posted, expected);
    ASSERT_FALSE(m_pasteboard.writes.empty());
    EXPECT_EQ(m_pasteboard.writes[0].text, "Best,\nAnna");
    EXPECT_EQ(m_pasteboard.writes[0].markers,
        (std::vector<std::string> { "com.quillmar.pasteboard", "org.nspasteboard.TransientType" }));
    EXPECT_TRUE(m_snippets->buffer().text().empty());

    m_runtime.advance(SnippetTyper::restoreDelay);
    EXPECT_EQ(m_pasteboard.text(), "what the user had") << "the clipboard comes back";
}

TEST_F(SnippetsTest, TheEarlierClipboardComesBackWithEveryTypeAndMarker)
{
    ASSERT_TRUE(m_snippets->add(make(";s", "short", true)));
    m_snippets->setEnabled(true);
    m_pasteboard.copy({ "public.rtf", "public.utf8-plain-text", "org.nspasteboard.ConcealedType", "com.example.vault.item" },
        { { "public.utf8-plain-text", "hunter2" } }, {}, std::nullopt,
        { { "public.rtf", "{\\rtf1 \\b hunter2}" }, { "com.example.vault.item", std::string("\0\1", 2) } });
    auto before = m_pasteboard.read();
    type(";s");
    m_runtime.advance(SnippetTyper::restoreDelay);

    auto after = m_pasteboard.read();
    before.types.push_back("com.quillmar.pasteboard");
    before.changeCount = after.changeCount;
    EXPECT_EQ(after, before);
}

TEST_F(SnippetsTest, ImmediateTriggersFireWithoutASpace)
{
    ASSERT_TRUE(m_snippets->add(make(";s", "short", true)));
    ASSERT_TRUE(m_snippets->add(make(";sig", "long")));
    m_snippets->setEnabled(true);
    type(";s");
    m_runtime.runUntilIdle();
    EXPECT_EQ(deletes(), 2u);
    EXPECT_EQ(m_pasteboard.writes.at(0).text, "short");
}

TEST_F(SnippetsTest, VariablesSeeTheClipboard)
{
    ASSERT_TRUE(m_snippets->add(make(";q", "> {clipboard}", true)));
    m_snippets->setEnabled(true);
    m_pasteboard.copyText("quoted");
    type(";q");
    m_runtime.runUntilIdle();
    EXPECT_EQ(m_pasteboard.writes.at(0).text, "> quoted");
}

TEST_F(SnippetsTest, ExcludedAppsAndSecureTypingStopExpansion)
{
    ASSERT_TRUE(m_snippets->add(make(";s", "x", true)));
    m_snippets->setEnabled(true);
    m_settings->set(Snippets::excludedAppsKey, { "com.example.mail" });
    type(";s");
    m_runtime.runUntilIdle();
    EXPECT_TRUE(m_keys.posted.empty());

    m_settings->set(Snippets::excludedAppsKey, {});
    m_focus.secureInput = true;
    type(" ;s");
    m_runtime.runUntilIdle();
    EXPECT_TRUE(m_keys.posted.empty());
    EXPECT_EQ(m_snippets->pauseReason(), "A password field somewhere has secure typing on, so snippets pause until it closes.");

    m_focus.secureInput = false;
    type(" ;s");
    m_runtime.runUntilIdle();
    EXPECT_FALSE(m_keys.posted.empty());
    EXPECT_FALSE(m_snippets->pauseReason());
}

TEST_F(SnippetsTest, WithoutATextFieldTheTextIsLeftOnTheClipboard)
{
    ASSERT_TRUE(m_snippets->add(make(";s", "text", true)));
    m_snippets->setEnabled(true);
    for (auto field : { FocusedField::none, FocusedField::secureText }) {
        m_focus.field = field;
        m_keys.posted.clear();
        type(" ;s");
        m_runtime.advance(std::chrono::seconds(1));
        EXPECT_EQ(m_pasteboard.text(), "text");
        EXPECT_EQ(std::count(m_keys.posted.begin(), m_keys.posted.end(), FakeKeystrokes::Key { KeyCode::v, EventFlags::command }), 0);
        EXPECT_EQ(m_notices.shown.back(), "Click where the text should go, then paste");
    }
    EXPECT_EQ(m_notices.details, (std::vector<std::string> { "", "A password field is blocking typing" }));
}

TEST_F(SnippetsTest, ClicksAndShortcutsResetTheBuffer)
{
    ASSERT_TRUE(m_snippets->add(make(";sig", "x", true)));
    m_snippets->setEnabled(true);
    type(";si");
    click(10.0);
    type("g");
    key(letterKey, "c", EventFlags::command);
    type(";si");
    key(TypedKeyBuffer::resetKeyCodes[0], "\r");
    type("g");
    m_runtime.runUntilIdle();
    EXPECT_TRUE(m_keys.posted.empty());

    type(" ;si");
    click(1200.0); // on the on-screen keyboard
    type("g");
    m_runtime.runUntilIdle();
    EXPECT_EQ(deletes(), 4u);
}

TEST_F(SnippetsTest, OwnKeystrokesDoNotFeedTheBuffer)
{
    m_snippets->setEnabled(true);
    type("ab");
    InputEvent own;
    own.type = EventType::keyDown;
    own.keyCode = TypedKeyBuffer::deleteKeyCode;
    own.sourceUserData = ownEventUserData;
    m_tap.runListeners(own);
    EXPECT_EQ(m_snippets->buffer().utf8(), "ab");
}

TEST_F(SnippetsTest, TriggersAreCheckedOnAddAndUpdate)
{
    auto added = m_snippets->add(make(";a", "one"));
    ASSERT_TRUE(added);
    EXPECT_EQ(added->id.size(), 36u);
    auto duplicate = m_snippets->add(make(";a", "two"));
    ASSERT_FALSE(duplicate);
    EXPECT_EQ(duplicate.error().message, "Another snippet already uses this trigger.");

    auto edited = *added;
    edited.text = "changed";
    EXPECT_TRUE(m_snippets->update(edited)) << "a snippet keeps its own trigger";
    edited.trigger = "";
    EXPECT_EQ(m_snippets->update(edited).error().message, "Type a trigger.");
    EXPECT_EQ(m_snippets->snippets().at(0).text, "changed");
}

TEST_F(SnippetsTest, DuplicatesGetAFreeTrigger)
{
    auto first = *m_snippets->add(make(";sig", "x"));
    EXPECT_EQ(m_snippets->uniqueTrigger(";new"), ";new");
    EXPECT_EQ(m_snippets->duplicate(first.id).value().trigger, ";sig2");
    EXPECT_EQ(m_snippets->duplicate(first.id).value().trigger, ";sig3");
    ASSERT_EQ(m_snippets->snippets().size(), 3u);
    EXPECT_EQ(m_snippets->snippets()[1].trigger, ";sig3") << "a copy goes right after its original";
    EXPECT_EQ(m_snippets->uniqueTrigger(";sig2"), ";sig4");
    auto longest = *m_snippets->add(make(std::string(40, 'z'), "x"));
    auto copy = m_snippets->uniqueTrigger(longest.trigger);
    EXPECT_EQ(copy, std::string(39, 'z') + "2");
    EXPECT_FALSE(m_snippets->duplicate("unknown"));
}

TEST_F(SnippetsTest, GroupsKeepTheirOrderAndDeletingOneKeepsItsSnippets)
{
    EXPECT_TRUE(m_snippets->addGroup("Mail"));
    EXPECT_TRUE(m_snippets->addGroup(" Work "));
    EXPECT_FALSE(m_snippets->addGroup("Mail"));
    EXPECT_FALSE(m_snippets->addGroup("  "));
    auto snippet = make(";m", "x");
    snippet.group = "Mail";
    ASSERT_TRUE(m_snippets->add(snippet));

    m_snippets->moveGroup("Mail", 5);
    EXPECT_EQ(m_snippets->groups(), (std::vector<std::string> { "Work", "Mail" }));
    EXPECT_TRUE(m_snippets->renameGroup("Mail", "Letters"));
    EXPECT_FALSE(m_snippets->renameGroup("Letters", "Work"));
    EXPECT_EQ(m_snippets->snippets()[0].group, "Letters");
    EXPECT_EQ(m_settings->stringArray("files.snippets.groups"), (std::vector<std::string> { "Work", "Letters" }));

    m_snippets->deleteGroup("Letters");
    EXPECT_EQ(m_snippets->groups(), (std::vector<std::string> { "Work" }));
    ASSERT_EQ(m_snippets->snippets().size(), 1u);
    EXPECT_EQ(m_snippets->snippets()[0].group, "");
}

TEST_F(SnippetsTest, TheLibrarySurvivesARestartInTheExportFormat)
{
    ASSERT_TRUE(m_snippets->addGroup("Mail"));
    auto snippet = make(";sig", "Anna");
    snippet.group = "Mail";
    ASSERT_TRUE(m_snippets->add(snippet));
    auto before = m_snippets->snippets();
    remake();
    EXPECT_EQ(m_snippets->snippets(), before);
    EXPECT_EQ(m_snippets->groups(), (std::vector<std::string> { "Mail" }));
    auto stored = readFile(file());
    ASSERT_TRUE(stored && *stored);
    EXPECT_TRUE(SnippetLibrary::decode(**stored));
    EXPECT_EQ(**stored, m_snippets->exportLibrary());
}

TEST_F(SnippetsTest, AnUnreadableLibraryIsKeptAside)
{
    m_snippets.reset();
    std::filesystem::create_directories(file().parent_path());
    std::ofstream(file()) << "not a library";
    remake();
    EXPECT_TRUE(m_snippets->snippets().empty());
    EXPECT_FALSE(std::filesystem::exists(file()));
    int kept = 0;
    for (const auto& entry : std::filesystem::directory_iterator(file().parent_path()))
        kept += entry.path().filename().string().rfind("Snippets.json.unreadable-", 0) == 0;
    EXPECT_EQ(kept, 1);
}

TEST_F(SnippetsTest, MergeImportsSnippetsAndGroups)
{
    ASSERT_TRUE(m_snippets->add(make(";a", "mine")));
    SnippetLibraryFile incoming;
    incoming.snippets = { make(";a", "theirs"), make(";b", "new") };
    incoming.snippets[1].group = "Imported";
    incoming.groups = { "Imported", "Empty" };
    auto result = m_snippets->merge(incoming, /*replaceConflicts=*/false);
    EXPECT_EQ(result.skipped, 1u);
    EXPECT_EQ(result.added, 1u);
    ASSERT_EQ(m_snippets->snippets().size(), 2u);
    EXPECT_EQ(m_snippets->snippets()[0].text, "mine");
    EXPECT_EQ(m_snippets->groups(), (std::vector<std::string> { "Imported", "Empty" }));
}

// The container owns the shared tap, so the engine is made once the container exists and put in its place;
// from then on the "snippets" switch enables and disables it.
TEST(SnippetService, TheContainerSwitchesTypingWatchOnAndOff)
{
    VirtualRuntime runtime;
    TemporaryFolder folder;
    Settings settings(std::make_unique<MemorySettingsBackend>());
    NullHotKeyRegistrar registrar;
    NullEventTapSource events;
    FakeKeyboard keyboard;
    FakeTextFocus focus;
    FakeFrontApplications front;
    FakePasteboard pasteboard { runtime.clock() };
    FakeKeystrokes keys;
    FakeNotices notices;
    AppServices app(runtime, settings, AppServices::SystemPorts { registrar, events }, ShellServices {}, Modules::standard());
    app.services().snippets = std::make_unique<Snippets>(runtime, settings, folder.path() / "Snippets.json",
        SnippetPorts { app.eventTap(), keyboard, focus, front, pasteboard, keys, notices });
    app.start();
    EXPECT_TRUE(app.eventTap().isRegistered(Snippets::registrationName));
    app.features().set(FeatureID::snippets, false);
    EXPECT_FALSE(app.eventTap().isRegistered(Snippets::registrationName));
}

} // namespace
} // namespace quillmar
