#include <gtest/gtest.h>

#include "core/runtime/VirtualRuntime.h"
#include "core/shell/StatusItemController.h"
#include "tests/shell/FakeStatusItemHost.h"

namespace quillmar {
namespace {

using namespace std::chrono_literals;

TEST(StatusItemController, ClickTogglesThePanel)
{
    VirtualRuntime runtime;
    FakeStatusItemHost host;
    StatusItemController controller(host, runtime.clock());
    controller.click();
    EXPECT_TRUE(host.visible);
    runtime.advance(2s);
    controller.click();
    EXPECT_FALSE(host.visible);
}

TEST(StatusItemController, AClickJustAfterThePanelHidItselfDoesNotReopenIt)
{
    struct Row {
        const char* name;
        Duration afterHide;
        bool shows;
    };
    const Row rows[] = {
        { "at once", 0ms, false },
        { "0.2 s later", 200ms, false },
        { "exactly 0.3 s later", 300ms, false },
        { "0.5 s later", 500ms, true },
    };
    for (const auto& row : rows) {
        VirtualRuntime runtime;
        FakeStatusItemHost host;
        StatusItemController controller(host, runtime.clock());
        controller.show();
        runtime.advance(5s);
        host.visible = false;
        controller.panelDidHide();
        runtime.advance(row.afterHide);
        controller.click();
        EXPECT_EQ(host.visible, row.shows) << row.name;
    }
}

TEST(StatusItemController, FirstClickEverShowsThePanel)
{
    VirtualRuntime runtime;
    FakeStatusItemHost host;
    StatusItemController controller(host, runtime.clock());
    controller.toggle();
    EXPECT_TRUE(host.visible);
}

TEST(StatusItemController, SettingsMenuOpensTheFirstPageAndAnnouncesIt)
{
    VirtualRuntime runtime;
    FakeStatusItemHost host;
    StatusItemController controller(host, runtime.clock());
    controller.menuSettings();
    EXPECT_EQ(host.log, (std::vector<std::string> { "openSettingsOnFirstPage", "notify quillmarOpenSettings" }));
}

} // namespace
} // namespace quillmar
