#include <gtest/gtest.h>

#include "core/snippets/SnippetLibrary.h"

namespace quillmar {
namespace {

TextSnippet snippet(std::string id, std::string trigger, std::string text, std::string group = {})
{
    TextSnippet made;
    made.id = std::move(id);
    made.trigger = std::move(trigger);
    made.text = std::move(text);
    made.group = std::move(group);
    return made;
}

TEST(SnippetLibrary, ExportAndImportRoundTrip)
{
    SnippetLibraryFile library;
    library.snippets.push_back(snippet("1", ";sig", "Kind regards,\nAnna", "Mail"));
    auto& second = library.snippets.emplace_back(snippet("2", "//addr", "1 Main St"));
    second.name = "Address";
    second.expandsImmediately = true;
    second.ignoresCase = true;
    second.showsInMenu = false;
    library.groups = { "Mail", "Work" };

    auto encoded = SnippetLibrary::encode(library);
    auto json = nlohmann::json::parse(encoded);
    EXPECT_EQ(json["format"], "quillmar.snippets");
    EXPECT_EQ(json["snippets"][0]["text"], "Kind regards,\nAnna");
    auto decoded = SnippetLibrary::decode(encoded);
    ASSERT_TRUE(decoded) << decoded.error().message;
    EXPECT_EQ(*decoded, library);
}

struct DecodeRow {
    const char* name;
    const char* data;
    ImportError error;
};

class DecodeErrors : public testing::TestWithParam<DecodeRow> { };

TEST_P(DecodeErrors, SayWhatIsWrong)
{
    auto decoded = SnippetLibrary::decode(GetParam().data);
    ASSERT_FALSE(decoded);
    EXPECT_EQ(SnippetLibrary::importError(decoded.error()), GetParam().error);
    EXPECT_EQ(decoded.error().message, SnippetLibrary::message(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(Files, DecodeErrors,
    testing::Values(
        DecodeRow { "Nothing", "", ImportError::empty },
        DecodeRow { "Blank", " \n", ImportError::empty },
        DecodeRow { "NoSnippets", R"({"format":"quillmar.snippets","snippets":[]})", ImportError::empty },
        DecodeRow { "NoReadableSnippet", R"({"format":"quillmar.snippets","snippets":[{"trigger":1}]})", ImportError::empty },
        DecodeRow { "NotJson", "trigger,text\n;a,b", ImportError::notALibrary },
        DecodeRow { "OtherFormat", R"({"format":"other.snippets","snippets":[{"trigger":";a","text":"b"}]})", ImportError::notALibrary },
        DecodeRow { "NoMarker", R"({"snippets":[{"trigger":";a","text":"b"}]})", ImportError::notALibrary },
        DecodeRow { "SnippetsNotAList", R"({"format":"quillmar.snippets","snippets":{}})", ImportError::notALibrary },
        DecodeRow { "AList", R"([{"trigger":";a","text":"b"}])", ImportError::notALibrary }),
    [](const testing::TestParamInfo<DecodeRow>& row) { return row.param.name; });

TEST(SnippetLibrary, ImportMessages)
{
    EXPECT_EQ(SnippetLibrary::message(ImportError::notALibrary), "This file doesn't contain snippets Quillmar can read.");
    EXPECT_EQ(SnippetLibrary::message(ImportError::empty), "The file is empty.");
    EXPECT_EQ(SnippetLibrary::title(ImportError::empty), "No snippets to import");
    EXPECT_EQ(SnippetLibrary::title(ImportError::notALibrary), "Couldn't import snippets");
}

TEST(SnippetLibrary, ReadingIsLenientPerEntry)
{
    auto decoded = SnippetLibrary::decode(R"({"format":"quillmar.snippets","groups":["A","",3,"A","B"],"snippets":[
        {"trigger":";a","text":"one","expandsImmediately":"yes","showsInMenu":false},
        {"id":"same","trigger":";b","text":"two"},
        {"id":"same","trigger":";c","text":"three"},
        {"trigger":";d"},
        "nonsense"]})");
    ASSERT_TRUE(decoded);
    ASSERT_EQ(decoded->snippets.size(), 3u);
    EXPECT_EQ(decoded->groups, (std::vector<std::string> { "A", "B" }));
    EXPECT_FALSE(decoded->snippets[0].id.empty()) << "a missing id is made";
    EXPECT_FALSE(decoded->snippets[0].expandsImmediately);
    EXPECT_FALSE(decoded->snippets[0].showsInMenu);
    EXPECT_EQ(decoded->snippets[1].id, "same");
    EXPECT_NE(decoded->snippets[2].id, "same") << "a repeated id is replaced";
}

TEST(SnippetLibrary, ConflictsCountIncomingTriggersAlreadyUsed)
{
    std::vector<TextSnippet> existing { snippet("1", ";a", "x"), snippet("2", ";b", "y") };
    std::vector<TextSnippet> incoming { snippet("9", ";b", "new"), snippet("8", ";c", "z"), snippet("7", ";a", "w") };
    EXPECT_EQ(SnippetLibrary::conflicts(existing, incoming), 2u);
    EXPECT_EQ(SnippetLibrary::conflicts(existing, {}), 0u);
}

TEST(SnippetLibrary, MergeReplacesInPlaceOrSkips)
{
    std::vector<TextSnippet> existing { snippet("1", ";a", "mine a"), snippet("2", ";b", "mine b", "Old") };
    std::vector<TextSnippet> incoming { snippet("9", ";b", "theirs b", "New"), snippet("1", ";c", "theirs c", "Extra"),
        snippet("8", ";c", "second ;c") };

    auto replaced = SnippetLibrary::merge(existing, { "Old" }, incoming, /*replaceConflicts=*/true);
    ASSERT_EQ(replaced.snippets.size(), 3u);
    EXPECT_EQ(replaced.snippets[1].id, "2") << "the replaced snippet keeps its place and id";
    EXPECT_EQ(replaced.snippets[1].text, "theirs b");
    EXPECT_NE(replaced.snippets[2].id, "1") << "an added snippet with a taken id gets a fresh one";
    EXPECT_EQ(replaced.snippets[2].text, "second ;c") << "a later duplicate in the file replaces the earlier";
    EXPECT_EQ(replaced.groups, (std::vector<std::string> { "Old", "New", "Extra" }));
    EXPECT_EQ(replaced.added, 1u);
    EXPECT_EQ(replaced.replaced, 2u);

    auto kept = SnippetLibrary::merge(existing, { "Old" }, incoming, /*replaceConflicts=*/false);
    ASSERT_EQ(kept.snippets.size(), 3u);
    EXPECT_EQ(kept.snippets[1].text, "mine b");
    EXPECT_EQ(kept.snippets[2].text, "theirs c");
    EXPECT_EQ(kept.skipped, 2u);
    EXPECT_EQ(kept.groups, (std::vector<std::string> { "Old", "Extra" }));
}

} // namespace
} // namespace quillmar
