#include <gtest/gtest.h>

#include <algorithm>

#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/shell/FeatureStore.h"

namespace quillmar {
namespace {

using Strings = std::vector<std::string>;

Strings rawValues(FeatureSet set)
{
    Strings values;
    for (auto feature : set.members())
        values.emplace_back(rawValue(feature));
    std::sort(values.begin(), values.end());
    return values;
}

Strings allRawValuesInOrder()
{
    Strings values;
    for (auto feature : allFeatures())
        values.emplace_back(rawValue(feature));
    return values;
}

struct Fixture {
    explicit Fixture(nlohmann::json saved = nlohmann::json::object())
    {
        auto backend = std::make_unique<MemorySettingsBackend>(std::move(saved));
        memory = backend.get();
        settings = std::make_unique<Settings>(std::move(backend));
    }
    FeatureStore makeStore() { return FeatureStore(*settings, runtime.mainQueue()); }

    VirtualRuntime runtime;
    MemorySettingsBackend* memory;
    std::unique_ptr<Settings> settings;
};

// Each row: what the settings hold before the first load, and what is off afterwards.
struct MigrationRow {
    const char* name;
    nlohmann::json saved;
    FeatureSet expectedOff;
};

// Test names show the row's name rather than its bytes.
void PrintTo(const MigrationRow& row, std::ostream* out)
{
    *out << row.name;
}

class FeatureStoreMigration : public testing::TestWithParam<MigrationRow> { };

TEST_P(FeatureStoreMigration, LoadsTheDisabledSet)
{
    Fixture fixture(GetParam().saved);
    auto store = fixture.makeStore();
    EXPECT_EQ(rawValues(FeatureSet::all() - store.enabled()), rawValues(GetParam().expectedOff));

    // Written back at once: the disabled list sorted, the known list complete and in declaration order.
    EXPECT_EQ(fixture.memory->values()["features.disabled"].get<Strings>(), rawValues(GetParam().expectedOff));
    EXPECT_EQ(fixture.memory->values()["features.known"].get<Strings>(), allRawValuesInOrder());
}

Strings allRawValuesExcept(std::initializer_list<const char*> missing)
{
    Strings values;
    for (const auto& raw : allRawValuesInOrder()) {
        if (std::find(missing.begin(), missing.end(), raw) == missing.end())
            values.push_back(raw);
    }
    return values;
}

INSTANTIATE_TEST_SUITE_P(Rows, FeatureStoreMigration,
    testing::Values(
        MigrationRow { "firstLaunch", nlohmann::json::object(), FeatureStore::offByDefault() },
        MigrationRow { "beforeTheKnownList", { { "features.disabled", { "clipboard" } } },
            (FeatureStore::offByDefault() - FeatureStore::originalFeatures) | FeatureSet { FeatureID::clipboard } },
        MigrationRow { "knownListLacksNewFeatures",
            { { "features.disabled", Strings {} }, { "features.known", allRawValuesExcept({ "dragSnap", "timer" }) } },
            FeatureSet { FeatureID::dragSnap } },
        MigrationRow { "everythingKnownKeepsTheUsersChoice",
            { { "features.disabled", { "timer", "fanControl" } }, { "features.known", allRawValuesInOrder() } },
            FeatureSet { FeatureID::timer, FeatureID::fanControl } },
        MigrationRow { "unknownRawValuesAreDropped",
            { { "features.disabled", { "teleporter", "timer" } }, { "features.known", allRawValuesInOrder() } },
            FeatureSet { FeatureID::timer } },
        MigrationRow { "wronglyTypedDisabledCountsAsAbsent",
            { { "features.disabled", "clipboard" }, { "features.known", allRawValuesInOrder() } },
            FeatureStore::offByDefault() },
        MigrationRow { "knownListWithoutDisabledList", { { "features.known", Strings { "monitor" } } },
            FeatureStore::offByDefault() }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(FeatureStore, SettingTheCurrentStateWritesNothingAndFiresNothing)
{
    Fixture fixture;
    auto store = fixture.makeStore();
    int saves = fixture.memory->saveCount();
    int calls = 0;
    store.setChangeCallback([&](FeatureID, bool) { ++calls; });

    store.set(FeatureID::clipboard, true);
    store.set(FeatureID::fanControl, false);
    EXPECT_EQ(fixture.memory->saveCount(), saves);
    EXPECT_EQ(calls, 0);
}

TEST(FeatureStore, ChangeWritesTheSortedDisabledListThenCallsBack)
{
    Fixture fixture;
    auto store = fixture.makeStore();
    std::vector<std::pair<FeatureID, bool>> calls;
    store.setChangeCallback([&](FeatureID feature, bool on) {
        // The list is already written when the callback runs.
        auto disabled = fixture.memory->values()["features.disabled"].get<Strings>();
        EXPECT_EQ(std::count(disabled.begin(), disabled.end(), rawValue(feature)), on ? 0 : 1);
        calls.emplace_back(feature, on);
    });

    store.set(FeatureID::clipboard, false);
    store.set(FeatureID::fanControl, true);
    store.set(FeatureID::clipboard, true);
    EXPECT_EQ(calls, (std::vector<std::pair<FeatureID, bool>> { { FeatureID::clipboard, false },
                         { FeatureID::fanControl, true }, { FeatureID::clipboard, true } }));
    auto disabled = fixture.memory->values()["features.disabled"].get<Strings>();
    EXPECT_TRUE(std::is_sorted(disabled.begin(), disabled.end()));
    EXPECT_EQ(disabled.size(), 25u);
}

TEST(FeatureStore, ChoicesSurviveAReload)
{
    Fixture fixture;
    fixture.makeStore().set(FeatureID::clipboard, false);
    auto reloaded = fixture.makeStore();
    EXPECT_FALSE(reloaded.isEnabled(FeatureID::clipboard));
    EXPECT_FALSE(reloaded.isEnabled(FeatureID::dragSnap));
    EXPECT_TRUE(reloaded.isEnabled(FeatureID::timer));
}

TEST(FeatureStoreDeathTest, UseOffTheMainThreadStopsTheProcess)
{
    Fixture fixture;
    auto store = fixture.makeStore();
    auto serial = fixture.runtime.makeSerialQueue("com.quillmar.test");
    serial->post([&] { store.set(FeatureID::timer, false); });
    EXPECT_DEATH(fixture.runtime.runUntilIdle(), "feature store used off the main thread");
}

} // namespace
} // namespace quillmar
