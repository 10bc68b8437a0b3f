#include "tests/clipboard/ClipboardStoreFixture.h"

#include "core/shell/AppServices.h"
#include "platform/null/NullEventTapPorts.h"
#include "platform/null/NullHotKeyPorts.h"

namespace quillmar {
namespace {

// The service container drives the store through ClipboardService: started with the "clipboard" switch,
// links cleaned with "cleanLinks", stopped (auto-clear observers too) when the switch goes off.
TEST(ClipboardService, TheContainerStartsAndStopsTheStore)
{
    ClipboardStoreFixture fixture;
    fixture.settings().set(ClipboardSettings::clearOnLock, true);
    NullHotKeyRegistrar registrar;
    NullEventTapSource events;
    ShellServices services;
    auto store = std::make_unique<ClipboardStore>(fixture.m_runtime, fixture.settings(), fixture.folder(),
        ClipboardPorts { fixture.m_pasteboard, fixture.m_front, fixture.m_session, fixture.m_keys, fixture.m_notices });
    auto* clipboard = store.get();
    services.clipboard = std::move(store);
    AppServices app(fixture.m_runtime, fixture.settings(), AppServices::SystemPorts { registrar, events }, std::move(services),
        Modules::standard());
    app.start();
    EXPECT_TRUE(clipboard->isRunning());
    EXPECT_TRUE(fixture.m_session.isObserved());

    fixture.m_pasteboard.copyText("https://example.com/?utm_source=x");
    fixture.tick();
    ASSERT_EQ(clipboard->items().size(), 1u);
    EXPECT_EQ(clipboard->items()[0].text, "https://example.com/") << "cleanLinks is on by default";

    app.features().set(FeatureID::cleanLinks, false);
    fixture.m_pasteboard.copyText("https://example.com/?utm_source=y");
    fixture.tick();
    EXPECT_EQ(clipboard->items()[0].text, "https://example.com/?utm_source=y");

    app.features().set(FeatureID::clipboard, false);
    EXPECT_FALSE(clipboard->isRunning());
    EXPECT_FALSE(fixture.m_session.isObserved());
    fixture.m_pasteboard.copyText("not recorded");
    fixture.tick();
    EXPECT_EQ(clipboard->items().size(), 2u);
}

} // namespace
} // namespace quillmar
