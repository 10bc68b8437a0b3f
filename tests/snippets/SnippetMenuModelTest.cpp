#include <gtest/gtest.h>

#include "core/snippets/SnippetMenuModel.h"

namespace quillmar {
namespace {

TEST(SnippetMenuModel, ShowsMenuSnippetsMatchingTheQuery)
{
    std::vector<TextSnippet> snippets(4);
    snippets[0] = { "1", ";sig", "Signature", "Kind regards", "", false, false, true };
    snippets[1] = { "2", ";addr", "", "Rue de l'Église 3", "", false, false, true };
    snippets[2] = { "3", ";pw", "Secret", "hidden", "", false, false, false };
    snippets[3] = { "4", "//date", "", "{date}", "", true, false, true };
    auto triggers = [&](std::string_view query) {
        std::string result;
        for (const auto& snippet : SnippetMenuModel::filter(snippets, query))
            result += snippet.trigger + " ";
        return result;
    };
    EXPECT_EQ(triggers(""), ";sig ;addr //date ") << "hidden snippets never show";
    EXPECT_EQ(triggers(" SIGN "), ";sig ") << "the name, case folded";
    EXPECT_EQ(triggers("eglise"), ";addr ") << "the text, accents folded";
    EXPECT_EQ(triggers("//"), "//date ") << "the trigger";
    EXPECT_EQ(triggers("secret"), "");
}

} // namespace
} // namespace quillmar
