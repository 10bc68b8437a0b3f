#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include <fmt/format.h>

#include "core/commandbar/CommandMatcher.h"
#include "core/commandbar/CommandRanker.h"

namespace quillmar {
namespace {

const WallTime now = WallTime(std::chrono::seconds(1'700'000'000));
constexpr double day = 86'400;

WallTime ago(double seconds)
{
    return now - std::chrono::duration_cast<WallTime::duration>(std::chrono::duration<double>(seconds));
}

CommandCandidate candidate(std::string id, CommandSource source, std::string title)
{
    CommandCandidate made;
    made.id = std::move(id);
    made.source = source;
    made.title = std::move(title);
    return made;
}

double matchScore(std::string_view query, std::string_view title)
{
    CommandMatcher matcher;
    auto match = matcher.match(matcher.prepare(query), title);
    return match ? match->score : -1;
}

std::vector<std::string> ids(const CommandSection& section)
{
    std::vector<std::string> ids;
    for (const auto& result : section.results)
        ids.push_back(result.candidate->id);
    return ids;
}

std::vector<std::string> sectionIds(const std::vector<CommandSection>& sections)
{
    std::vector<std::string> ids;
    for (const auto& section : sections)
        ids.push_back(section.id);
    return ids;
}

// Every result id in display order, sections flattened.
std::vector<std::string> allIds(const std::vector<CommandSection>& sections)
{
    std::vector<std::string> all;
    for (const auto& section : sections) {
        auto some = ids(section);
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

// Throws when the candidate was not ranked, which fails the test cleanly.
const CommandResult& find(const std::vector<CommandSection>& sections, std::string_view id)
{
    for (const auto& section : sections) {
        for (const auto& result : section.results) {
            if (result.candidate->id == id)
                return result;
        }
    }
    throw std::out_of_range("not ranked: " + std::string(id));
}

class CommandRankerTest : public testing::Test {
protected:
    std::vector<CommandSection> rank(std::string query, std::vector<CommandCandidate> candidates,
        CommandScope scope = CommandScope::all)
    {
        m_input.query = std::move(query);
        m_input.scope = scope;
        m_input.candidates = makeCandidateList(std::move(candidates));
        m_input.now = now;
        return m_ranker.rank(m_input);
    }

    CommandRanker m_ranker;
    CommandRanker::Input m_input;
};

TEST_F(CommandRankerTest, TwoCharacterQueriesNeedPointFortyTwoAndLongerOnesPointThree)
{
    // Preconditions: the scores these titles are chosen for.
    ASSERT_NEAR(matchScore("ab", "xxxxxxxxxxab"), 0.382, 1e-9);
    ASSERT_NEAR(matchScore("ab", "xxxxxxab"), 0.438, 1e-9);
    ASSERT_NEAR(matchScore("abc", "xxxxxxxxxxabxc"), 0.3938, 1e-4);
    auto sections = rank("ab", { candidate("low", CommandSource::apps, "xxxxxxxxxxab"),
                                   candidate("high", CommandSource::apps, "xxxxxxab") });
    EXPECT_EQ(allIds(sections), (std::vector<std::string> { "high" }));
    sections = rank("abc", { candidate("kept", CommandSource::apps, "xxxxxxxxxxabxc") });
    EXPECT_EQ(allIds(sections), (std::vector<std::string> { "kept" }));
    sections = rank("a b", { candidate("low", CommandSource::apps, "xxxxxxxxxxab") });
    EXPECT_TRUE(sections.empty()) << "whitespace does not count towards the length";
}

TEST_F(CommandRankerTest, TheFirstCandidateWithAnIdWinsAmongThoseThatMatch)
{
    auto sections = rank("mail", { candidate("x", CommandSource::apps, "Mail"),
                                     candidate("x", CommandSource::files, "Mail Merge") });
    EXPECT_EQ(allIds(sections), (std::vector<std::string> { "x" }));
    EXPECT_EQ(sections.front().results.front().candidate->title, "Mail");

    sections = rank("mail", { candidate("x", CommandSource::apps, "Zzz"), candidate("x", CommandSource::files, "Mail Merge") });
    ASSERT_EQ(allIds(sections).size(), 1u);
    EXPECT_EQ(sections.front().results.front().candidate->title, "Mail Merge") << "one that does not match claims nothing";
}

TEST_F(CommandRankerTest, EmojiOnlyInTheirScopeAndMenusOnlyFromTwoCharacters)
{
    std::vector<CommandCandidate> list { candidate("smile", CommandSource::emoji, "Smiling Face"),
        candidate("save", CommandSource::menus, "Save") };
    EXPECT_TRUE(rank("s", list).empty());
    EXPECT_EQ(allIds(rank("sa", list)), (std::vector<std::string> { "save" }));
    EXPECT_EQ(allIds(rank("s", list, CommandScope::menus)), (std::vector<std::string> { "save" }));
    EXPECT_EQ(allIds(rank("s", list, CommandScope::emoji)), (std::vector<std::string> { "smile" }));
}

TEST_F(CommandRankerTest, ScopeKeepsItsSourcesAndWebIsNeverRanked)
{
    std::vector<CommandCandidate> list { candidate("app", CommandSource::apps, "Notes"),
        candidate("file", CommandSource::files, "notes.txt"), candidate("web", CommandSource::web, "notes") };
    EXPECT_EQ(allIds(rank("notes", list, CommandScope::files)), (std::vector<std::string> { "file" }));
    auto all = allIds(rank("notes", list));
    EXPECT_EQ(all.size(), 2u);
    EXPECT_EQ(std::count(all.begin(), all.end(), "web"), 0);
}

TEST_F(CommandRankerTest, ScoreIsSourceWeightTimesMatchPlusBoost)
{
    auto boosted = candidate("boosted", CommandSource::scripts, "Notes");
    boosted.boost = 0.25;
    auto sections = rank("note", { candidate("app", CommandSource::apps, "Notes"),
                                     candidate("file", CommandSource::files, "Notes"), boosted });
    double match = matchScore("note", "Notes");
    EXPECT_DOUBLE_EQ(find(sections, "app").score, 1.0 * match);
    EXPECT_DOUBLE_EQ(find(sections, "file").score, 0.74 * match);
    EXPECT_DOUBLE_EQ(find(sections, "boosted").score, 0.92 * match + 0.25);
    EXPECT_EQ(find(sections, "app").matches, (std::vector<std::size_t> { 0, 1, 2, 3 }));
}

TEST_F(CommandRankerTest, KeywordsMatchAtADiscountWithoutHighlight)
{
    auto settings = candidate("display", CommandSource::settings, "Displays");
    settings.keywords = { "monitor", "resolution" };
    auto sections = rank("moni", { settings });
    const auto& result = find(sections, "display");
    EXPECT_DOUBLE_EQ(result.score, 0.86 * (0.86 * matchScore("moni", "monitor")));
    EXPECT_TRUE(result.matches.empty());

    // A title that scores higher than the discounted keyword keeps its highlight.
    settings.keywords = { "displays" };
    sections = rank("disp", { settings });
    EXPECT_DOUBLE_EQ(find(sections, "display").score, 0.86 * matchScore("disp", "Displays"));
    EXPECT_EQ(find(sections, "display").matches, (std::vector<std::size_t> { 0, 1, 2, 3 }));
}

TEST_F(CommandRankerTest, LearnedWeightAddsAFrecencyBonusOnlyToLearningCandidates)
{
    auto book = std::make_shared<CommandLearning>();
    book->entries["mail"] = { 3, now, 3 }; // 0.2 * min(0.25 * log2(3 + 1), 1) = 0.1
    book->entries["maps"] = { 3, now, 3 };
    book->entries["music"] = { 15, ago(7 * day), 3 }; // decayed to 7.5 in a week
    m_input.frecency = book;
    auto notLearning = candidate("maps", CommandSource::apps, "Maps");
    notLearning.learns = false;
    auto sections = rank("m", { candidate("mail", CommandSource::apps, "Mail"), notLearning,
                                  candidate("music", CommandSource::apps, "Music") });
    EXPECT_DOUBLE_EQ(find(sections, "mail").score, matchScore("m", "Mail") + 0.1);
    EXPECT_DOUBLE_EQ(find(sections, "maps").score, matchScore("m", "Maps"));
    EXPECT_DOUBLE_EQ(find(sections, "music").score, matchScore("m", "Music") + 0.2 * 0.25 * std::log2(8.5));
}

TEST_F(CommandRankerTest, HabitBonusGoesToWhatWasPickedAfterTheSameQuery)
{
    auto book = std::make_shared<CommandLearning>();
    book->secret.fill(3);
    book->record("maps", "ma", now);
    m_input.frecency = book;
    auto bonus = book->habitBonuses("ma", now).at("maps");
    auto sections = rank("ma", { candidate("mail", CommandSource::apps, "Mail"), candidate("maps", CommandSource::apps, "Maps") });
    double frecency = 0.2 * 0.25 * std::log2(2.0);
    EXPECT_DOUBLE_EQ(find(sections, "maps").score, matchScore("ma", "Maps") + frecency + bonus);
    EXPECT_DOUBLE_EQ(find(sections, "mail").score, matchScore("ma", "Mail"));
    EXPECT_EQ(sections.front().results.front().candidate->id, "maps");
}

TEST_F(CommandRankerTest, DatesEarnARecencyBonusFadingOverTwentyDays)
{
    struct Row {
        const char* id;
        double age;
        double bonus;
    };
    const Row rows[] = { { "today", 0, 0.08 }, { "fiveDays", 5 * day, 0.08 - 0.004 * 5 }, { "twentyFive", 25 * day, 0 },
        { "ahead", -3 * day, 0.08 } };
    std::vector<CommandCandidate> list;
    for (const auto& row : rows) {
        list.push_back(candidate(row.id, CommandSource::files, "report.pdf"));
        list.back().date = ago(row.age);
    }
    auto sections = rank("report", list);
    double base = 0.74 * matchScore("report", "report.pdf");
    for (const auto& row : rows)
        EXPECT_NEAR(find(sections, row.id).score, base + row.bonus, 1e-12) << row.id;
}

TEST_F(CommandRankerTest, AnswersScoreTenInScopeAllAndKeepTheirOrder)
{
    m_input.answers = { candidate("calc-long", CommandSource::answer, "= 4 (two plus two)"),
        candidate("calc", CommandSource::answer, "= 4") };
    auto sections = rank("2+2", { candidate("app", CommandSource::apps, "2+2 Game") });
    ASSERT_EQ(sectionIds(sections), (std::vector<std::string> { "top", "answer", "apps" }));
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "calc-long" })) << "the first answer, though its title is longer";
    EXPECT_EQ(sections[0].results[0].score, 10.0);
    EXPECT_TRUE(sections[0].results[0].matches.empty());
    EXPECT_EQ(ids(sections[1]), (std::vector<std::string> { "calc" }));
    EXPECT_EQ(sections[1].title, "Answers");

    EXPECT_EQ(sectionIds(rank("2+2", { candidate("app", CommandSource::apps, "2+2 Game") }, CommandScope::apps)),
        (std::vector<std::string> { "top" })) << "no answers outside scope all";
}

TEST_F(CommandRankerTest, EqualScoresPutTheShorterTitleFirstThenKeepInputOrder)
{
    // Keyword matches score alike whatever the title, so only the tie rules decide.
    std::vector<CommandCandidate> list;
    for (auto [id, title] : { std::pair { "long", "Long title" }, std::pair { "five1", "Fives" }, std::pair { "five2", "Other" },
             std::pair { "three", "Tri" } }) {
        list.push_back(candidate(id, CommandSource::actions, title));
        list.back().keywords = { "quux" };
        list.back().boost = -0.5; // stays under the top hit
    }
    auto sections = rank("quux", list);
    ASSERT_EQ(sections.size(), 1u);
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "three", "five1", "five2", "long" }));
}

TEST_F(CommandRankerTest, SectionsFollowTheirBestScore)
{
    auto weak = candidate("weakApp", CommandSource::apps, "xxxxxxxxnotes");
    auto strong = candidate("strongFile", CommandSource::files, "notes");
    auto weakFile = candidate("weakFile", CommandSource::files, "xnotes");
    weakFile.boost = -0.9;
    auto sections = rank("notes", { weak, strong, weakFile });
    EXPECT_EQ(sectionIds(sections), (std::vector<std::string> { "top", "files", "apps" }));
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "strongFile" }));
}

TEST_F(CommandRankerTest, TopHitNeedsPointSixTwo)
{
    double match = matchScore("term", "Terminal");
    auto exactly = candidate("terminal", CommandSource::apps, "Terminal");
    exactly.boost = 0.62 - match;
    ASSERT_EQ(match + exactly.boost, 0.62);
    auto other = candidate("other", CommandSource::apps, "Terminal Extra Long");
    other.boost = -0.5;
    auto sections = rank("term", { exactly, other });
    ASSERT_EQ(sectionIds(sections), (std::vector<std::string> { "top", "apps" }));
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "terminal" }));
    EXPECT_EQ(sections[0].title, "Top hit");
    EXPECT_EQ(ids(sections[1]), (std::vector<std::string> { "other" }));

    exactly.boost = 0.6199 - match;
    sections = rank("term", { exactly, other });
    ASSERT_EQ(sectionIds(sections), (std::vector<std::string> { "apps" }));
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "terminal", "other" }));
}

TEST_F(CommandRankerTest, ASectionEmptiedByTheTopHitIsDropped)
{
    auto sections = rank("mail", { candidate("mail", CommandSource::apps, "Mail") });
    EXPECT_EQ(sectionIds(sections), (std::vector<std::string> { "top" }));
}

TEST_F(CommandRankerTest, FallbacksComeLastInEveryScope)
{
    m_input.fallbacks = { candidate("search", CommandSource::web, "Search the web for \"mail\"") };
    auto sections = rank("mail", { candidate("mail", CommandSource::apps, "Mail"), candidate("doc", CommandSource::files, "mail.txt") });
    ASSERT_EQ(sectionIds(sections), (std::vector<std::string> { "top", "files", "fallbacks" }));
    EXPECT_EQ(sections.back().results.front().score, 0.0);
    EXPECT_EQ(sectionIds(rank("qqq", { candidate("mail", CommandSource::apps, "Mail") }, CommandScope::files)),
        (std::vector<std::string> { "fallbacks" }));
}

TEST_F(CommandRankerTest, SectionsAreCutAfterTheTopHit)
{
    std::vector<CommandCandidate> list;
    for (int index = 0; index < 30; ++index)
        list.push_back(candidate(fmt::format("n{:02}", index), CommandSource::apps, fmt::format("Note {:02}", index)));
    auto sections = rank("note", list);
    ASSERT_EQ(sectionIds(sections), (std::vector<std::string> { "top", "apps" }));
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "n00" }));
    ASSERT_EQ(sections[1].results.size(), CommandRanker::maxSectionResults);
    EXPECT_EQ(sections[1].results.front().candidate->id, "n01");
    EXPECT_EQ(sections[1].results.back().candidate->id, "n20");
}

TEST_F(CommandRankerTest, OnlyTheFirstThirtyTwoQueryCharactersCount)
{
    std::string title(32, 'a');
    EXPECT_EQ(allIds(rank(title + "zzz", { candidate("a", CommandSource::apps, title) })), (std::vector<std::string> { "a" }));
}

TEST_F(CommandRankerTest, ResultsOutliveTheRankerAndTheList)
{
    std::vector<CommandSection> sections;
    {
        CommandRanker ranker;
        CommandRanker::Input input;
        input.query = "mail";
        input.candidates = makeCandidateList({ candidate("mail", CommandSource::apps, "Mail") });
        sections = ranker.rank(input);
    }
    ASSERT_EQ(sections.size(), 1u);
    EXPECT_EQ(sections[0].results[0].candidate->title, "Mail");
}

TEST_F(CommandRankerTest, ANewListIsPreparedAgain)
{
    auto first = rank("mail", { candidate("mail", CommandSource::apps, "Mail") });
    EXPECT_EQ(allIds(first), (std::vector<std::string> { "mail" }));
    // The same list again (the next keystroke) and then a different one.
    m_input.query = "mai";
    EXPECT_EQ(allIds(m_ranker.rank(m_input)), (std::vector<std::string> { "mail" }));
    auto second = rank("mail", { candidate("maps", CommandSource::apps, "Maps"), candidate("mail2", CommandSource::apps, "Mailbox") });
    EXPECT_EQ(allIds(second), (std::vector<std::string> { "mail2" }));
    m_input.candidates = nullptr;
    EXPECT_TRUE(m_ranker.rank(m_input).empty());
}

class EmptyQueryTest : public CommandRankerTest {
protected:
    std::vector<CommandCandidate> list()
    {
        auto book = std::make_shared<CommandLearning>();
        book->entries["app-z"] = { 3, now, 1 };
        book->entries["act"] = { 1, now, 1 };
        book->entries["file-used"] = { 2, now, 1 };
        book->entries["emoji"] = { 9, now, 1 };
        m_input.frecency = book;
        return { candidate("set", CommandSource::settings, "Zoom"), candidate("app-b", CommandSource::apps, "beta"),
            candidate("file", CommandSource::files, "report.pdf"), candidate("act", CommandSource::actions, "Clear"),
            candidate("app-a", CommandSource::apps, "Alpha"), candidate("file-used", CommandSource::files, "notes.txt"),
            candidate("emoji", CommandSource::emoji, "Grinning"), candidate("script", CommandSource::scripts, "backup"),
            candidate("app-z", CommandSource::apps, "Zed"), candidate("app-a", CommandSource::apps, "Alpha again") };
    }
};

TEST_F(EmptyQueryTest, ScopeAllSuggestsAppsFirstThenByWeightThenByTitle)
{
    auto sections = rank("  ", list());
    ASSERT_EQ(sections.size(), 1u);
    EXPECT_EQ(sections[0].id, "suggestions");
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "app-z", "app-a", "app-b", "file-used", "act", "script", "set" }));
    EXPECT_DOUBLE_EQ(sections[0].results.front().score, 3) << "the listing's score is the learned weight";
}

TEST_F(EmptyQueryTest, ANarrowScopeListsItsSource)
{
    auto sections = rank("", list(), CommandScope::files);
    ASSERT_EQ(sections.size(), 1u);
    EXPECT_EQ(sections[0].id, "files");
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "file-used", "file" }));
    EXPECT_EQ(ids(rank("", list(), CommandScope::emoji)[0]), (std::vector<std::string> { "emoji" }));
}

TEST_F(EmptyQueryTest, TitlesCompareWithoutCase)
{
    auto sections = rank("", { candidate("b", CommandSource::apps, "banana"), candidate("a", CommandSource::apps, "Apple"),
                                 candidate("c", CommandSource::apps, "cherry"), candidate("e", CommandSource::apps, "\u00C9clair") });
    EXPECT_EQ(ids(sections[0]), (std::vector<std::string> { "a", "b", "c", "e" }));
}

} // namespace
} // namespace quillmar
