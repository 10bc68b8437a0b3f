#include <gtest/gtest.h>

#include "core/apps/FlatYaml.h"

namespace quillmar {
namespace {

using Scalars = std::map<std::string, std::string, std::less<>>;

struct FlatYamlCase {
    const char* name;
    std::string text;
    Scalars expected;
};

class FlatYamlTest : public testing::TestWithParam<FlatYamlCase> { };

TEST_P(FlatYamlTest, CollectsTopLevelScalars)
{
    EXPECT_EQ(flatYamlScalars(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rules, FlatYamlTest,
    testing::Values(
        FlatYamlCase { "PlainPairs", "provider: github\nowner: acme\n", { { "provider", "github" }, { "owner", "acme" } } },
        FlatYamlCase { "CommentLinesAreSkipped", "# provider: generic\nprovider: github\n", { { "provider", "github" } } },
        FlatYamlCase { "TrailingCommentEndsAnUnquotedValue", "repo: tool # the repository\n", { { "repo", "tool" } } },
        FlatYamlCase { "HashInsideAWordIsKept", "channel: beta#2\n", { { "channel", "beta#2" } } },
        FlatYamlCase { "DoubleQuotesAreRemoved", "version: \"1.2.3\"\n", { { "version", "1.2.3" } } },
        FlatYamlCase { "SingleQuotesAreRemoved", "releaseDate: '2024-05-01T10:00:00.000Z'\n",
            { { "releaseDate", "2024-05-01T10:00:00.000Z" } } },
        FlatYamlCase { "QuotedValueKeepsItsHash", "name: 'a # b' # comment\n", { { "name", "a # b" } } },
        FlatYamlCase { "UnmatchedQuoteIsKept", "name: \"open\n", { { "name", "\"open" } } },
        FlatYamlCase { "ColonsInsideAValueStay", "url: https://example.com:8443/updates\n",
            { { "url", "https://example.com:8443/updates" } } },
        FlatYamlCase { "NestedStructuresAreIgnored",
            "files:\n  - url: App.zip\n    sha512: abc\n    size: 12\npath: App.zip\nversion: 2.0.0\n",
            { { "path", "App.zip" }, { "version", "2.0.0" } } },
        FlatYamlCase { "TopLevelListItemsAreIgnored", "- version: 9\nversion: 1\n", { { "version", "1" } } },
        FlatYamlCase { "DocumentMarkersAreIgnored", "---\nversion: 1\n...\n", { { "version", "1" } } },
        FlatYamlCase { "CarriageReturnsAndByteOrderMark", "\xEF\xBB\xBFversion: 1.0\r\nowner: me\r\n",
            { { "version", "1.0" }, { "owner", "me" } } },
        FlatYamlCase { "FirstOfARepeatedKeyWins", "version: 1\nversion: 2\n", { { "version", "1" } } },
        FlatYamlCase { "LinesWithoutAKeyColonAreSkipped", "just text\nkey:value\nversion: 3", { { "version", "3" } } },
        FlatYamlCase { "EmptyQuotedValueIsKept", "channel: ''\n", { { "channel", "" } } },
        FlatYamlCase { "Nothing", "", {} }),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace quillmar
