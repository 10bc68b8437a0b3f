#include "core/snippets/SnippetMenuModel.h"

#include "core/base/SearchFolding.h"
#include "core/base/Text.h"

namespace quillmar::SnippetMenuModel {

namespace {

} // namespace

std::vector<TextSnippet> filter(const std::vector<TextSnippet>& snippets, std::string_view query)
{
    auto needle = foldedForSearch(trimmed(query));
    std::vector<TextSnippet> shown;
    for (const auto& snippet : snippets) {
        if (!snippet.showsInMenu)
            continue;
        auto contains = [&](std::string_view text) { return foldedForSearch(text).find(needle) != std::string::npos; };
        if (!needle.empty() && !contains(snippet.trigger) && !contains(snippet.displayName()) && !contains(snippet.text))
            continue;
        shown.push_back(snippet);
    }
    return shown;
}

} // namespace quillmar::SnippetMenuModel
