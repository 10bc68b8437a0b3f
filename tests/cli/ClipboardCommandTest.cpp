#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include <nlohmann/json.hpp>

#include "core/base/Files.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

class ClipboardCommandTest : public CliTest {
protected:
    std::filesystem::path historyFile() const { return m_folder.path() / "data" / "Quillmar" / "Clipboard" / "history.json"; }

    void writeHistory(const std::string& text) { ASSERT_TRUE(writeFileAtomically(historyFile(), text)); }

    void writeSampleHistory()
    {
        writeHistory(R"([
            {"id":"L","kind":"link","text":"https://example.com/a","date":1767225600.5,"isPinned":false,"sourceName":"Browser"},
            {"id":"C","kind":"text","text":"#ff8800","date":1767225500,"isPinned":true},
            {"id":"F","kind":"files","filePaths":["/home/me/report.pdf"],"date":1767225400,"isPinned":false,"sourceName":"Files"},
            {"id":"T","kind":"text","text":"line one\nline two","date":1767225300,"isPinned":false,"sourceName":"Editor"}
        ])");
    }
};

TEST_F(ClipboardCommandTest, ListsNewestFirstWithTheDocumentedJson)
{
    writeSampleHistory();
    auto text = run({ "clipboard", "list" });
    EXPECT_EQ(text.code, 0);
    // Each line: the local date and time of the copy, the kind, a star for a pin, a one-line preview.
    std::vector<std::string> tails;
    std::istringstream lines(text.out);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ(line.substr(4, 1) + line.substr(7, 1) + line.substr(10, 1) + line.substr(13, 1), "-- :") << line;
        tails.push_back(line.substr(18));
    }
    EXPECT_EQ(tails, (std::vector<std::string> { "link  https://example.com/a", "text  * #ff8800", "files /home/me/report.pdf",
                         "text  line one line two" }));

    auto json = run({ "clipboard", "list", "--json" });
    ASSERT_EQ(json.code, 0);
    EXPECT_EQ(std::count(json.out.begin(), json.out.end(), '\n'), 1);
    auto items = nlohmann::json::parse(json.out)["items"];
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items[0], (nlohmann::json { { "id", "L" }, { "kind", "link" }, { "text", "https://example.com/a" },
                            { "filePaths", nullptr }, { "date", 1767225600.5 }, { "isPinned", false }, { "sourceName", "Browser" } }));
    EXPECT_EQ(items[2]["filePaths"], (nlohmann::json { "/home/me/report.pdf" }));
    EXPECT_EQ(items[1]["sourceName"], nullptr);
}

struct FilterRow {
    const char* name;
    std::vector<std::string> options;
    std::string ids;
};

class ClipboardListFilters : public ClipboardCommandTest, public testing::WithParamInterface<FilterRow> { };

TEST_P(ClipboardListFilters, SelectItems)
{
    writeSampleHistory();
    std::vector<std::string> words { "clipboard", "list", "--json" };
    words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
    auto result = run(words);
    ASSERT_EQ(result.code, 0) << result.err;
    auto parsed = nlohmann::json::parse(result.out);
    std::string ids;
    for (const auto& item : parsed["items"])
        ids += item["id"].get<std::string>();
    EXPECT_EQ(ids, GetParam().ids);
}

INSTANTIATE_TEST_SUITE_P(Options, ClipboardListFilters,
    testing::Values(
        FilterRow { "All", { "--category", "all" }, "LCFT" },
        FilterRow { "Colors", { "--category", "colors" }, "C" },
        FilterRow { "SearchText", { "--search", "LINE TWO" }, "T" },
        FilterRow { "SearchWithCategory", { "--search", "report", "--category", "files" }, "F" }),
    [](const testing::TestParamInfo<FilterRow>& row) { return row.param.name; });

TEST_F(ClipboardCommandTest, NoHistoryIsNoAnswer)
{
    auto text = run({ "clipboard", "list" });
    EXPECT_EQ(text.code, 1);
    EXPECT_EQ(text.out, "");
    auto json = run({ "clipboard", "list", "--json" });
    EXPECT_EQ(json.code, 0);
    EXPECT_EQ(json.out, "{\"items\":[]}\n");
}

TEST_F(ClipboardCommandTest, AnUnreadableHistoryIsRefusedAndLeftAlone)
{
    writeHistory("{broken");
    auto result = run({ "clipboard", "list" });
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "The clipboard history could not be read.\n");
    EXPECT_EQ(**readFile(historyFile()), "{broken") << "the command only reads";
}

TEST_F(ClipboardCommandTest, UnknownCategoryIsAUsageError)
{
    EXPECT_EQ(run({ "clipboard", "list", "--category", "sounds" }).code, 2);
}

TEST_F(ClipboardCommandTest, CleanLink)
{
    auto cleaned = run({ "clipboard", "clean-link", "https://example.com/p?id=1&utm_source=mail&fbclid=x" });
    EXPECT_EQ(cleaned.code, 0);
    EXPECT_EQ(cleaned.out, "https://example.com/p?id=1\n");

    auto clean = run({ "clipboard", "clean-link", "https://example.com/p?id=1" });
    EXPECT_EQ(clean.code, 1);
    EXPECT_EQ(clean.out, "");
    EXPECT_EQ(clean.err, "Link is already clean\n");

    auto notALink = run({ "clipboard", "clean-link", "hello" });
    EXPECT_EQ(notALink.code, 2);
    EXPECT_EQ(notALink.out, "");
}

} // namespace
} // namespace quillmar
