#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/base/Files.h"
#include "platform/linux/AutostartLoginItem.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

class AutostartLoginItemTest : public testing::Test {
protected:
    std::unique_ptr<AutostartLoginItem> itemIn(const fs::path& configHome)
    {
        ::setenv("XDG_CONFIG_HOME", configHome.c_str(), 1);
        auto item = AutostartLoginItem::create();
        EXPECT_TRUE(item.ok());
        return item.ok() ? std::move(item).value() : nullptr;
    }

    static bool isOn(const AutostartLoginItem& item)
    {
        auto on = item.launchesAtLogin();
        EXPECT_TRUE(on.ok());
        return on.ok() && *on;
    }

    TemporaryFolder m_folder;
};

TEST_F(AutostartLoginItemTest, TurningOnWritesAnEntryThatRunsThisProgramAndOffRemovesIt)
{
    auto item = itemIn(m_folder.path());
    ASSERT_TRUE(item);
    EXPECT_EQ(item->entry(), m_folder.path() / "autostart" / "quillmar.desktop");
    EXPECT_FALSE(isOn(*item));

    ASSERT_TRUE(item->setLaunchesAtLogin(true).ok());
    EXPECT_TRUE(isOn(*item));
    auto text = readFile(item->entry());
    ASSERT_TRUE(text.ok() && text->has_value());
    EXPECT_NE((*text)->find("[Desktop Entry]\n"), std::string::npos);
    EXPECT_NE((*text)->find("\nExec=" + desktopExecValue(fs::read_symlink("/proc/self/exe")) + "\n"),
        std::string::npos);

    ASSERT_TRUE(item->setLaunchesAtLogin(false).ok());
    EXPECT_FALSE(fs::exists(item->entry()));
    EXPECT_FALSE(isOn(*item));
    EXPECT_TRUE(item->setLaunchesAtLogin(false).ok());
}

TEST_F(AutostartLoginItemTest, AHiddenEntryIsOffUntilTurnedOnAgain)
{
    auto item = itemIn(m_folder.path());
    ASSERT_TRUE(item);
    ASSERT_TRUE(writeFileAtomically(item->entry(),
        "[Desktop Entry]\nType=Application\nExec=quillmar\nHidden = true\n\n[Desktop Action Quit]\nHidden=false\n")
                    .ok());
    EXPECT_FALSE(isOn(*item));

    ASSERT_TRUE(item->setLaunchesAtLogin(true).ok());
    EXPECT_TRUE(isOn(*item));
}

TEST_F(AutostartLoginItemTest, AFolderThatCannotBeWrittenIsAClearFailure)
{
    // A file where the configuration folder should be stops even root.
    ASSERT_TRUE(writeFileAtomically(m_folder.path() / "config", "not a folder").ok());
    auto item = itemIn(m_folder.path() / "config");
    ASSERT_TRUE(item);

    auto result = item->setLaunchesAtLogin(true);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, "loginItem.unwritable");
    EXPECT_EQ(result.error().message, "Quillmar couldn't be set to open at login.");
}

struct Quoting {
    const char* name;
    const char* program;
    const char* exec;
};

class DesktopExecValueTest : public testing::TestWithParam<Quoting> { };

TEST_P(DesktopExecValueTest, QuotesThePathAsOneArgument)
{
    EXPECT_EQ(desktopExecValue(GetParam().program), GetParam().exec);
}

INSTANTIATE_TEST_SUITE_P(Paths, DesktopExecValueTest,
    testing::Values(Quoting { "Plain", "/usr/bin/quillmar", R"("/usr/bin/quillmar")" },
        Quoting { "Spaces", "/opt/My Apps/quillmar", R"("/opt/My Apps/quillmar")" },
        Quoting { "ShellCharacters", "/opt/a\"b$c`d/quillmar", R"("/opt/a\\"b\\$c\\`d/quillmar")" },
        Quoting { "Backslash", R"(/opt/a\b/quillmar)", R"("/opt/a\\\\b/quillmar")" },
        Quoting { "Percent", "/opt/100%/quillmar", R"("/opt/100%%/quillmar")" },
        Quoting { "Newline", "/opt/a\nb/quillmar", R"("/opt/a\nb/quillmar")" }),
    [](const testing::TestParamInfo<Quoting>& row) { return row.param.name; });

} // namespace
} // namespace quillmar
