#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fstream>

#include "core/base/Files.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/JsonFileSettingsBackend.h"
#include "core/settings/Settings.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

void writeText(const std::filesystem::path& path, std::string_view text)
{
    std::ofstream(path, std::ios::binary) << text;
}

std::vector<std::string> namesIn(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(JsonFileSettingsBackend, ParseAcceptsOnlyAnObject)
{
    struct Row {
        const char* name;
        const char* text;
        bool usable;
    };
    const Row rows[] = {
        { "object", R"({"a": 1})", true },
        { "empty object", "{}", true },
        { "array", "[1, 2]", false },
        { "number", "3", false },
        { "truncated", R"({"a": )", false },
        { "empty file", "", false },
        { "binary", "\x01\x02\xff", false },
    };
    for (const auto& row : rows)
        EXPECT_EQ(JsonFileSettingsBackend::parse(row.text).ok(), row.usable) << row.name;
}

TEST(JsonFileSettingsBackend, MissingFileLoadsEmptyAndSaveCreatesFolders)
{
    TemporaryFolder folder;
    VirtualRuntime runtime;
    auto path = folder.path() / "config" / "quillmar" / "settings.json";
    JsonFileSettingsBackend backend(path, runtime.clock());
    auto loaded = backend.load();
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded->empty());

    ASSERT_TRUE(backend.save({ { "features.disabled", { "clipboard" } } }));
    auto reloaded = backend.load();
    ASSERT_TRUE(reloaded);
    EXPECT_EQ((*reloaded)["features.disabled"][0], "clipboard");
    EXPECT_EQ(namesIn(path.parent_path()), (std::vector<std::string> { "settings.json" })) << "no temporary left";
}

TEST(JsonFileSettingsBackend, LoadingRemovesTheTemporaryOfAKilledWrite)
{
    TemporaryFolder folder;
    VirtualRuntime runtime;
    auto path = folder.path() / "settings.json";
    writeText(path, R"({"a": 1})");
    // A pid above any kernel's limit: the process that wrote it is gone.
    writeText(folder.path() / "settings.json.tmp-2147483647", R"({"a": )");

    JsonFileSettingsBackend backend(path, runtime.clock());
    ASSERT_TRUE(backend.load());
    EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string> { "settings.json" }));
}

TEST(JsonFileSettingsBackend, UnreadableFileIsKeptAsideAndNeverOverwritten)
{
    TemporaryFolder folder;
    VirtualRuntime runtime;
    runtime.setWallTime(std::chrono::sys_days(std::chrono::year(2026) / 11 / 22) + std::chrono::hours(10));
    auto path = folder.path() / "settings.json";
    writeText(path, "{ \"features.disabled\": [\"clipboard\"");

    Settings settings(std::make_unique<JsonFileSettingsBackend>(path, runtime.clock()));
    EXPECT_EQ(settings.stringArray("features.disabled"), std::nullopt) << "starts from the defaults";
    settings.set("features.disabled", { "timer" });

    EXPECT_EQ(namesIn(folder.path()),
        (std::vector<std::string> { "settings.json", "settings.json.unreadable-20261122T100000Z" }));
    auto kept = readFile(folder.path() / "settings.json.unreadable-20261122T100000Z");
    ASSERT_TRUE(kept && *kept);
    EXPECT_EQ(**kept, "{ \"features.disabled\": [\"clipboard\"");
}

TEST(JsonFileSettingsBackend, KeptAsideNameIsInUtcWhateverTheLocalZone)
{
    // A POSIX zone nine hours east of UTC, so that local midnight and UTC 10:00 differ in day and hour.
    const char* previous = std::getenv("TZ");
    std::string saved = previous ? previous : "";
    setenv("TZ", "JST-9", 1);
    tzset();
    TemporaryFolder folder;
    VirtualRuntime runtime;
    runtime.setWallTime(std::chrono::sys_days(std::chrono::year(2026) / 11 / 22) + std::chrono::hours(20));
    auto path = folder.path() / "settings.json";
    writeText(path, "[]");

    auto loaded = JsonFileSettingsBackend(path, runtime.clock()).load();

    if (previous)
        setenv("TZ", saved.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
    ASSERT_FALSE(loaded);
    EXPECT_EQ(std::filesystem::path(loaded.error().context).filename(), "settings.json.unreadable-20261122T200000Z");
}

TEST(JsonFileSettingsBackend, SecondUnreadableFileInTheSameSecondKeepsTheFirstCopy)
{
    TemporaryFolder folder;
    auto path = folder.path() / "settings.json";
    writeText(path, "first");
    ASSERT_TRUE(moveAside(path, "20261122T100000Z"));
    writeText(path, "second");
    auto second = moveAside(path, "20261122T100000Z");
    ASSERT_TRUE(second);
    EXPECT_EQ(second->filename(), "settings.json.unreadable-20261122T100000Z-2");
    EXPECT_EQ(**readFile(folder.path() / "settings.json.unreadable-20261122T100000Z"), "first");
}

} // namespace
} // namespace quillmar
