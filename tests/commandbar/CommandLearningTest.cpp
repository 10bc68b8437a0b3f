#include <gtest/gtest.h>

#include <cmath>

#include <fmt/format.h>

#include "core/commandbar/CommandLearning.h"
#include "tests/commandbar/FakeRandomSource.h"

namespace quillmar {
namespace {

const WallTime now = WallTime(std::chrono::seconds(1'700'000'000));
constexpr double week = 604'800;
constexpr double day = 86'400;

WallTime ago(double seconds)
{
    return now - std::chrono::duration_cast<WallTime::duration>(std::chrono::duration<double>(seconds));
}

CommandLearning book()
{
    FakeRandomSource random;
    return CommandLearning::create(random).value();
}

TEST(CommandLearningTest, CreateTakesTheSecretFromTheRandomSource)
{
    FakeRandomSource random;
    auto created = CommandLearning::create(random);
    ASSERT_TRUE(created.ok());
    EXPECT_EQ(created->secret[0], 1);
    EXPECT_EQ(created->secret[31], 32);
    EXPECT_TRUE(created->entries.empty());
    random.setFails(true);
    EXPECT_FALSE(CommandLearning::create(random).ok());
}

TEST(CommandLearningPrefixKeysTest, AreHmacSha256OfEachPrefixInLowercaseHex)
{
    auto learning = book(); // secret 1, 2, ..., 32
    auto keys = learning.prefixKeys("resume");
    ASSERT_EQ(keys.size(), 6u);
    EXPECT_EQ(keys.front(), "cec141ca8f3d61eaeb2926711dc52ef5a307678c160eff1ba6a04e8ab53cf826");
    EXPECT_EQ(keys.back(), "c8fd7dbe5bf088d3fe465a2c3400642d8a80bdf17852f27957d329b400f546f0");
}

TEST(CommandLearningPrefixKeysTest, IgnoreCaseAccentsWidthAndSpaces)
{
    auto learning = book();
    auto plain = learning.prefixKeys("resume");
    const char* spellings[] = { "R\u00E9 sum\u00E9", "RESUME", " r e s u m e ", "\uFF52\uFF45\uFF53\uFF55\uFF4D\uFF45",
        "re\u0301sume\u0301" };
    for (const char* spelling : spellings)
        EXPECT_EQ(learning.prefixKeys(spelling), plain) << spelling;
}

TEST(CommandLearningPrefixKeysTest, StopAtSixteenCharactersAndDependOnTheSecret)
{
    auto learning = book();
    EXPECT_EQ(learning.prefixKeys("abcdefghijklmnopqrstuvwxyz").size(), 16u);
    EXPECT_EQ(learning.prefixKeys("\U0001F1EB\U0001F1F7x").size(), 2u) << "a flag is one character";
    EXPECT_TRUE(learning.prefixKeys(" \t\n").empty());
    EXPECT_TRUE(learning.prefixKeys("").empty());
    auto other = learning;
    other.secret[0] ^= 1;
    EXPECT_NE(other.prefixKeys("a"), learning.prefixKeys("a"));
}

TEST(CommandLearningTest, WeightHalvesEachWeek)
{
    auto learning = book();
    learning.entries["old"] = { 4, ago(week), 3 };
    learning.entries["older"] = { 4, ago(2 * week), 3 };
    learning.entries["ahead"] = { 4, ago(-week), 3 };
    EXPECT_DOUBLE_EQ(learning.weight("old", now), 2);
    EXPECT_DOUBLE_EQ(learning.weight("older", now), 1);
    EXPECT_DOUBLE_EQ(learning.weight("ahead", now), 4) << "an update after now counts as now";
    EXPECT_EQ(learning.weight("missing", now), 0);
}

TEST(CommandLearningTest, RecordAddsOneToTheDecayedWeight)
{
    auto learning = book();
    learning.record("mail", "ma", ago(week));
    EXPECT_EQ(learning.entries.at("mail"), (CommandLearning::Entry { 1, ago(week), 1 }));
    learning.record("mail", "ma", now);
    EXPECT_EQ(learning.entries.at("mail"), (CommandLearning::Entry { 1.5, now, 2 }));
    auto keys = learning.prefixKeys("ma");
    ASSERT_EQ(keys.size(), 2u);
    for (const auto& key : keys)
        EXPECT_EQ(learning.habits.at(key).at("mail"), (CommandLearning::Habit { 2, now }));
    EXPECT_EQ(learning.habits.size(), 2u);
}

TEST(CommandLearningHabitTest, BonusFollowsCountShareLengthAndAge)
{
    auto learning = book();
    auto key = learning.prefixKeys("ma").back();
    learning.habits[key] = { { "mail", { 3, now } }, { "maps", { 1, ago(28 * day) } } };
    auto bonuses = learning.habitBonuses("Ma", now);
    ASSERT_EQ(bonuses.size(), 2u);
    double confidence = std::min(0.55 + 0.15 * 2, 1.0); // two prefix keys
    EXPECT_DOUBLE_EQ(bonuses.at("mail"), confidence * (3.0 / 4 * 0.6 * 1.0) * 1.0);
    EXPECT_DOUBLE_EQ(bonuses.at("maps"), confidence * (1.0 / 4 * 0.6 * 0.5) * 0.5) << "28 days halve a habit";
}

TEST(CommandLearningHabitTest, DecayNeverGoesUnderFortyPercent)
{
    auto learning = book();
    auto key = learning.prefixKeys("m").back();
    learning.habits[key] = { { "mail", { 2, ago(365 * day) } } };
    EXPECT_DOUBLE_EQ(learning.habitBonuses("m", now).at("mail"), (0.55 + 0.15) * (1.0 * 0.6 * 1.0) * 0.4);
}

TEST(CommandLearningHabitTest, OnlyTheLongestPrefixCounts)
{
    auto learning = book();
    learning.record("maps", "m", now);
    EXPECT_EQ(learning.habitBonuses("m", now).size(), 1u);
    EXPECT_TRUE(learning.habitBonuses("ma", now).empty()) << "\"ma\" was never typed before a pick";
    EXPECT_TRUE(learning.habitBonuses("   ", now).empty());
    // The confidence is capped for long queries: 0.55 + 0.15 k reaches 1 at k = 3.
    learning.record("mail", "mailbox settings", now);
    EXPECT_DOUBLE_EQ(learning.habitBonuses("mailbox settings", now).at("mail"), 1.0 * (1.0 * 0.6 * 0.5));
}

TEST(CommandLearningHabitTest, AGroupReachingFiveIdsDropsTheWeakest)
{
    auto learning = book();
    auto key = learning.prefixKeys("x").back();
    learning.habits[key] = {
        { "a", { 5, ago(day) } },
        { "b", { 2, ago(3 * day) } }, // lowest count, oldest of the two: dropped
        { "c", { 2, ago(2 * day) } },
        { "d", { 9, ago(9 * day) } },
    };
    learning.record("e", "x", now);
    const auto& group = learning.habits.at(key);
    EXPECT_EQ(group.size(), 4u);
    EXPECT_FALSE(group.contains("b"));
    EXPECT_TRUE(group.contains("e")) << "the id just recorded stays although its count is the lowest";

    // Equal counts and dates: the first in id order goes.
    learning.habits[key] = { { "p", { 1, now } }, { "q", { 1, now } }, { "r", { 1, now } }, { "s", { 1, now } } };
    learning.record("a", "x", now);
    EXPECT_FALSE(learning.habits.at(key).contains("p"));
    EXPECT_TRUE(learning.habits.at(key).contains("a"));
}

TEST(CommandLearningTest, TopOrdersByCurrentWeightThenId)
{
    auto learning = book();
    learning.entries["b"] = { 2, now, 1 };
    learning.entries["a"] = { 2, now, 1 };
    learning.entries["c"] = { 8, ago(3 * week), 1 }; // now 1
    learning.entries["d"] = { 3, now, 1 };
    EXPECT_EQ(learning.top(10, now), (std::vector<std::string> { "d", "a", "b", "c" }));
    EXPECT_EQ(learning.top(2, now), (std::vector<std::string> { "d", "a" }));
}

TEST(CommandLearningTest, TheSixHundredFirstEntryPrunesToFourHundredFifty)
{
    auto learning = book();
    for (int index = 0; index < 600; ++index)
        learning.entries[fmt::format("id{:03}", index)] = { 1.0 + index, now, 1 };
    learning.prune(now);
    EXPECT_EQ(learning.entries.size(), 600u) << "600 is within bounds";
    learning.record("new", "n", now); // weight 1: among the lightest
    EXPECT_EQ(learning.entries.size(), 450u);
    EXPECT_FALSE(learning.entries.contains("new"));
    EXPECT_FALSE(learning.entries.contains("id149"));
    EXPECT_TRUE(learning.entries.contains("id150"));
    EXPECT_TRUE(learning.entries.contains("id599"));
}

TEST(CommandLearningTest, MoreThanNineHundredGroupsKeepTheNewest)
{
    auto learning = book();
    for (int index = 0; index < 901; ++index)
        learning.habits[fmt::format("k{:03}", index)] = { { "x", { 1, ago(1000.0 - index) } } };
    learning.habits["empty"] = {};
    learning.prune(now);
    EXPECT_EQ(learning.habits.size(), 675u);
    EXPECT_FALSE(learning.habits.contains("empty")) << "a group without habits counts as the distant past";
    EXPECT_FALSE(learning.habits.contains("k225"));
    EXPECT_TRUE(learning.habits.contains("k226"));
    EXPECT_TRUE(learning.habits.contains("k900"));
}

TEST(CommandLearningJsonTest, RoundTripsWithEpochSecondsAndBase64)
{
    auto learning = book();
    learning.record("mail", "m", now);
    auto json = learning.toJson();
    EXPECT_EQ(json.at("secret"), "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyA=");
    EXPECT_EQ(json.at("entries").at("mail"), (nlohmann::json { { "weight", 1.0 }, { "updated", 1.7e9 }, { "uses", 1 } }));
    auto key = learning.prefixKeys("m").front();
    EXPECT_EQ(json.at("habits").at(key).at("mail"), (nlohmann::json { { "count", 1 }, { "last", 1.7e9 } }));
    EXPECT_EQ(CommandLearning::fromJson(json), learning);
}

struct CorruptRow {
    const char* name;
    nlohmann::json json;
};

class CorruptBookTest : public testing::TestWithParam<CorruptRow> { };

TEST_P(CorruptBookTest, IsNone)
{
    EXPECT_EQ(CommandLearning::fromJson(GetParam().json), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Values, CorruptBookTest,
    testing::Values(CorruptRow { "NotAnObject", nlohmann::json::array() },
        CorruptRow { "NoSecret", { { "entries", nlohmann::json::object() } } },
        CorruptRow { "SecretNotAString", { { "secret", 5 } } },
        CorruptRow { "SecretTooShort", { { "secret", "AQID" } } },
        CorruptRow { "SecretNotBase64", { { "secret", "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHy!=" } } },
        CorruptRow { "SecretWithoutPadding", { { "secret", "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyA" } } }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CommandLearningJsonTest, MalformedRecordsAreLeftOut)
{
    nlohmann::json json = {
        { "secret", "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyA=" },
        { "entries",
            {
                { "good", { { "weight", 2 }, { "updated", 1.7e9 }, { "uses", 2 } } },
                { "negative", { { "weight", -1 }, { "updated", 1.7e9 }, { "uses", 2 } } },
                { "stringDate", { { "weight", 1 }, { "updated", "yesterday" }, { "uses", 2 } } },
                { "farFuture", { { "weight", 1 }, { "updated", 1e300 }, { "uses", 2 } } },
                { "fractionalUses", { { "weight", 1 }, { "updated", 1.7e9 }, { "uses", 1.5 } } },
                { "missingUses", { { "weight", 1 }, { "updated", 1.7e9 } } },
            } },
        { "habits",
            {
                { "k1", { { "good", { { "count", 1 }, { "last", 1.7e9 } } }, { "bad", { { "count", -1 }, { "last", 1.7e9 } } } } },
                { "k2", "not a group" },
            } },
    };
    auto learning = CommandLearning::fromJson(json);
    ASSERT_TRUE(learning.has_value());
    EXPECT_EQ(learning->entries.size(), 1u);
    EXPECT_TRUE(learning->entries.contains("good"));
    ASSERT_EQ(learning->habits.size(), 1u);
    EXPECT_EQ(learning->habits.at("k1").size(), 1u);
}

TEST(CommandLearningJsonTest, MissingListsReadAsEmpty)
{
    auto learning = CommandLearning::fromJson({ { "secret", "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyA=" } });
    ASSERT_TRUE(learning.has_value());
    EXPECT_TRUE(learning->entries.empty());
    EXPECT_TRUE(learning->habits.empty());
    EXPECT_EQ(learning->secret, book().secret);
}

} // namespace
} // namespace quillmar
