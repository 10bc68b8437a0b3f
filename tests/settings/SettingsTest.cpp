#include <functional>

#include <gtest/gtest.h>

#include "core/settings/MemorySettingsBackend.h"
#include "core/settings/Settings.h"

namespace quillmar {
namespace {

Settings settingsWith(nlohmann::json values)
{
    return Settings(std::make_unique<MemorySettingsBackend>(std::move(values)));
}

TEST(Settings, TypedReadsWithoutADefaultTreatAWrongTypeAsAbsent)
{
    auto settings = settingsWith({ { "flag", true }, { "count", 3 }, { "ratio", 0.5 }, { "name", "x" },
        { "list", { "a", "b" } }, { "mixedList", { "a", 1 } }, { "huge", 18446744073709551615u } });

    EXPECT_EQ(settings.boolValue("flag"), true);
    EXPECT_EQ(settings.boolValue("count"), std::nullopt);
    EXPECT_EQ(settings.integer("count"), 3);
    EXPECT_EQ(settings.integer("ratio"), std::nullopt);
    EXPECT_EQ(settings.integer("huge"), std::nullopt);
    EXPECT_EQ(settings.number("count"), 3.0);
    EXPECT_EQ(settings.number("ratio"), 0.5);
    EXPECT_EQ(settings.string("name"), "x");
    EXPECT_EQ(settings.string("flag"), std::nullopt);
    EXPECT_EQ(settings.stringArray("list"), (std::vector<std::string> { "a", "b" }));
    EXPECT_EQ(settings.stringArray("mixedList"), std::nullopt);
    EXPECT_EQ(settings.stringArray("name"), std::nullopt);
    EXPECT_EQ(settings.string("missing"), std::nullopt);
}

TEST(Settings, ASavedValueOfTheWrongTypeReadsAsTheRegisteredDefault)
{
    // A default-on switch saved as a string must read as on, not as off.
    struct Row {
        const char* name;
        nlohmann::json saved;
        nlohmann::json registered;
        std::function<bool(const Settings&)> readsRegistered;
    };
    const std::vector<std::string> fallbackList { "x" };
    const Row rows[] = {
        { "boolSavedAsString", "yes", true, [](const Settings& s) { return s.boolValue("key") == true; } },
        { "boolSavedAsNumber", 0, true, [](const Settings& s) { return s.boolValue("key") == true; } },
        { "integerSavedAsFraction", 2.5, 7, [](const Settings& s) { return s.integer("key") == 7; } },
        { "integerSavedAsBool", false, 7, [](const Settings& s) { return s.integer("key") == 7; } },
        { "numberSavedAsString", "1.5", 0.25, [](const Settings& s) { return s.number("key") == 0.25; } },
        { "stringSavedAsArray", { "a" }, "auto", [](const Settings& s) { return s.string("key") == "auto"; } },
        { "stringSavedAsNull", nullptr, "auto", [](const Settings& s) { return s.string("key") == "auto"; } },
        { "listSavedAsString", "a", fallbackList, [&](const Settings& s) { return s.stringArray("key") == fallbackList; } },
        { "listWithANumberInIt", { "a", 1 }, fallbackList,
            [&](const Settings& s) { return s.stringArray("key") == fallbackList; } },
    };
    for (const auto& row : rows) {
        auto settings = settingsWith({ { "key", row.saved } });
        settings.registerDefaults({ { "key", row.registered } });
        EXPECT_TRUE(row.readsRegistered(settings)) << row.name;
        EXPECT_TRUE(settings.contains("key")) << row.name << ": the saved value is kept as it is";
    }
}

constexpr SettingKey<bool> flagKey { "key", true };
constexpr SettingKey<std::int64_t> countKey { "key", 7 };
constexpr SettingKey<double> ratioKey { "key", 0.25 };
constexpr SettingKey<std::string_view> modeKey { "key", "auto" };
const SettingKey<std::vector<std::string>> listKey { "key", { "x" } };

TEST(Settings, ASavedValueOfTheWrongTypeReadsAsTheKeyDefault)
{
    struct Row {
        const char* name;
        nlohmann::json saved;
        std::function<bool(const Settings&)> readsDefault;
    };
    const Row rows[] = {
        { "boolSavedAsString", "yes", [](const Settings& s) { return s.value(flagKey) == true; } },
        { "boolSavedAsNumber", 0, [](const Settings& s) { return s.value(flagKey) == true; } },
        { "integerSavedAsFraction", 2.5, [](const Settings& s) { return s.value(countKey) == 7; } },
        { "integerSavedAsBool", false, [](const Settings& s) { return s.value(countKey) == 7; } },
        { "integerTooLarge", 18446744073709551615u, [](const Settings& s) { return s.value(countKey) == 7; } },
        { "numberSavedAsString", "1.5", [](const Settings& s) { return s.value(ratioKey) == 0.25; } },
        { "stringSavedAsArray", { "a" }, [](const Settings& s) { return s.value(modeKey) == "auto"; } },
        { "stringSavedAsNull", nullptr, [](const Settings& s) { return s.value(modeKey) == "auto"; } },
        { "listSavedAsString", "a", [](const Settings& s) { return s.value(listKey) == listKey.defaultValue; } },
        { "listWithANumberInIt", { "a", 1 }, [](const Settings& s) { return s.value(listKey) == listKey.defaultValue; } },
    };
    for (const auto& row : rows) {
        auto settings = settingsWith({ { "key", row.saved } });
        EXPECT_TRUE(row.readsDefault(settings)) << row.name;
        EXPECT_EQ(settings.json("key"), row.saved) << row.name << ": the saved value is kept as it is";
    }
}

TEST(Settings, KeysReadTheSavedValueAndWriteItBack)
{
    auto settings = settingsWith({ { "key", false } });
    EXPECT_FALSE(settings.value(flagKey));
    EXPECT_EQ(settings.value(countKey), 7) << "an absent or mistyped value reads as the default";
    EXPECT_EQ(settings.saved(countKey), std::nullopt);

    settings.set(countKey, 3);
    EXPECT_EQ(settings.value(countKey), 3);
    settings.set(ratioKey, 0.5);
    EXPECT_EQ(settings.value(ratioKey), 0.5);
    settings.set(modeKey, "manual");
    EXPECT_EQ(settings.value(modeKey), "manual");
    settings.set(listKey, { "a", "b" });
    EXPECT_EQ(settings.value(listKey), (std::vector<std::string> { "a", "b" }));
    EXPECT_EQ(settings.saved(listKey), (std::vector<std::string> { "a", "b" }));
}

TEST(Settings, DefaultsRegisteredFromKeysServeUntypedReads)
{
    constexpr SettingKey<std::string_view> otherKey { "other", "manual" };
    auto settings = settingsWith({});
    settings.registerDefaults(listKey, otherKey);
    EXPECT_EQ(settings.json("key"), nlohmann::json({ "x" }));
    EXPECT_EQ(settings.json("other"), "manual");
    EXPECT_FALSE(settings.contains("key")) << "a default is not a saved value";
}

TEST(Settings, SavedValuesWinOverRegisteredDefaults)
{
    auto settings = settingsWith({ { "a", 1 } });
    settings.registerDefaults({ { "a", 10 }, { "b", 20 } });
    EXPECT_EQ(settings.integer("a"), 1);
    EXPECT_EQ(settings.integer("b"), 20);
    EXPECT_FALSE(settings.contains("b")) << "a default is not a saved value";
    settings.remove("a");
    EXPECT_EQ(settings.integer("a"), 10);
}

TEST(Settings, SetSavesAndNotifiesOnlyOnChange)
{
    auto backend = std::make_unique<MemorySettingsBackend>();
    auto* memory = backend.get();
    Settings settings(std::move(backend));
    std::vector<std::string> changed;
    auto id = settings.observe([&](std::string_view key) { changed.emplace_back(key); });

    settings.set("windows.switcher.trigger", "option");
    settings.set("windows.switcher.trigger", "option");
    settings.remove("never.set");
    EXPECT_EQ(memory->saveCount(), 1);
    EXPECT_EQ(changed, (std::vector<std::string> { "windows.switcher.trigger" }));
    EXPECT_EQ(memory->values()["windows.switcher.trigger"], "option");

    settings.removeObserver(id);
    settings.set("windows.switcher.trigger", "command");
    EXPECT_EQ(changed.size(), 1u);
    EXPECT_EQ(memory->saveCount(), 2);
}

class FailingBackend final : public SettingsBackend {
public:
    explicit FailingBackend(std::string loadCode) : m_loadCode(std::move(loadCode)) { }
    Result<nlohmann::json> load() override { return Error { m_loadCode, "The settings file is not valid JSON.", "x" }; }
    Result<void> save(const nlohmann::json&) override
    {
        ++saves;
        return Error { "file.unwritable", "Could not save.", "disk full" };
    }
    int saves = 0;

private:
    std::string m_loadCode;
};

TEST(Settings, AStoreThatWasNotKeptAsideIsNeverOverwritten)
{
    auto backend = std::make_unique<FailingBackend>("file.unmovable");
    auto* failing = backend.get();
    Settings settings(std::move(backend));
    settings.set("a", 1);
    EXPECT_EQ(failing->saves, 0);
    EXPECT_EQ(settings.integer("a"), 1) << "the run goes on in memory";
}

TEST(Settings, AFailedSaveIsReported)
{
    auto backend = std::make_unique<FailingBackend>("settings.setAside");
    Settings settings(std::move(backend));
    settings.set("a", 1);
    ASSERT_TRUE(settings.lastSaveError());
    EXPECT_EQ(settings.lastSaveError()->context, "disk full");
}

} // namespace
} // namespace quillmar
