#include <gtest/gtest.h>

#include "core/commandbar/CommandScope.h"
#include "core/commandbar/CommandSource.h"

namespace quillmar {
namespace {

TEST(CommandScopeTest, AllCoversEverySourceAndTheOthersTheirOwn)
{
    EXPECT_EQ(sources(CommandScope::all).size(), commandSourceCount);
    const std::pair<CommandScope, CommandSource> own[] = {
        { CommandScope::apps, CommandSource::apps }, { CommandScope::files, CommandSource::files },
        { CommandScope::windows, CommandSource::windows }, { CommandScope::menus, CommandSource::menus },
        { CommandScope::clipboard, CommandSource::clipboard }, { CommandScope::snippets, CommandSource::snippets },
        { CommandScope::actions, CommandSource::actions }, { CommandScope::emoji, CommandSource::emoji },
        { CommandScope::scripts, CommandSource::scripts },
    };
    for (auto [scope, source] : own) {
        ASSERT_EQ(sources(scope).size(), 1u) << rawValue(scope);
        EXPECT_EQ(sources(scope).front(), source);
        EXPECT_EQ(rawValue(scope), rawValue(source));
        EXPECT_EQ(commandScopeFromRawValue(rawValue(scope)), scope);
        for (auto other : allCommandSources())
            EXPECT_EQ(covers(scope, other), other == source);
    }
    EXPECT_FALSE(covers(CommandScope::apps, CommandSource::settings));
    EXPECT_EQ(commandScopeFromRawValue("settings"), std::nullopt) << "settings have no scope of their own";
}

} // namespace
} // namespace quillmar
