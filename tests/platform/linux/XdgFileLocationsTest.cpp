#include <gtest/gtest.h>

#include <map>

#include "platform/linux/XdgFileLocations.h"

namespace quillmar {
namespace {

XdgFileLocations withEnvironment(std::map<std::string, std::string> variables)
{
    return XdgFileLocations([variables](const char* name) -> std::optional<std::string> {
        if (auto found = variables.find(name); found != variables.end())
            return found->second;
        return std::nullopt;
    });
}

TEST(XdgFileLocations, FollowsTheBaseDirectories)
{
    struct Row {
        const char* name;
        std::map<std::string, std::string> environment;
        const char* settingsFile;
        const char* applicationSupport;
    };
    const Row rows[] = {
        { "set explicitly", { { "HOME", "/home/ann" }, { "XDG_CONFIG_HOME", "/cfg" }, { "XDG_DATA_HOME", "/data" } },
            "/cfg/quillmar/settings.json", "/data/Quillmar" },
        { "defaults below home", { { "HOME", "/home/ann" } }, "/home/ann/.config/quillmar/settings.json",
            "/home/ann/.local/share/Quillmar" },
        { "relative values are ignored", { { "HOME", "/home/ann" }, { "XDG_CONFIG_HOME", "cfg" }, { "XDG_DATA_HOME", "" } },
            "/home/ann/.config/quillmar/settings.json", "/home/ann/.local/share/Quillmar" },
    };
    for (const auto& row : rows) {
        auto locations = withEnvironment(row.environment);
        EXPECT_EQ(locations.settingsFile(), row.settingsFile) << row.name;
        EXPECT_EQ(locations.applicationSupport(), row.applicationSupport) << row.name;
    }
}

} // namespace
} // namespace quillmar
