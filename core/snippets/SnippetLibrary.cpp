#include "core/snippets/SnippetLibrary.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include <nlohmann/json.hpp>

#include "core/base/Uuid.h"

namespace quillmar::SnippetLibrary {

namespace {

constexpr std::string_view notALibraryCode = "snippets.notALibrary";
constexpr std::string_view emptyCode = "snippets.empty";

Error errorFor(ImportError error)
{
    return Error { std::string(error == ImportError::empty ? emptyCode : notALibraryCode), std::string(message(error)), {} };
}

bool isBlank(std::string_view data)
{
    return std::all_of(data.begin(), data.end(),
        [](char character) { return character == ' ' || character == '\t' || character == '\n' || character == '\r'; });
}

void addGroup(std::vector<std::string>& groups, const std::string& name)
{
    if (!name.empty() && std::find(groups.begin(), groups.end(), name) == groups.end())
        groups.push_back(name);
}

} // namespace

std::string_view title(ImportError error)
{
    return error == ImportError::empty ? "No snippets to import" : importFailedTitle;
}

std::string_view message(ImportError error)
{
    return error == ImportError::empty ? "The file is empty." : "This file doesn't contain snippets Quillmar can read.";
}

ImportError importError(const Error& error)
{
    return error.code == emptyCode ? ImportError::empty : ImportError::notALibrary;
}

Result<SnippetLibraryFile> read(std::string_view data)
{
    if (isBlank(data))
        return errorFor(ImportError::empty);
    auto json = nlohmann::json::parse(data, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (!json.is_object())
        return errorFor(ImportError::notALibrary);
    auto marker = json.find("format");
    auto snippets = json.find("snippets");
    if (marker == json.end() || !marker->is_string() || marker->get<std::string>() != formatMarker || snippets == json.end()
        || !snippets->is_array())
        return errorFor(ImportError::notALibrary);

    SnippetLibraryFile library;
    std::unordered_set<std::string> ids;
    for (const auto& entry : *snippets) {
        auto snippet = TextSnippet::fromJson(entry);
        if (!snippet)
            continue;
        if (snippet->id.empty() || ids.contains(snippet->id))
            snippet->id = makeUuid();
        ids.insert(snippet->id);
        library.snippets.push_back(std::move(*snippet));
    }
    if (auto groups = json.find("groups"); groups != json.end() && groups->is_array()) {
        for (const auto& group : *groups) {
            if (group.is_string())
                addGroup(library.groups, group.get<std::string>());
        }
    }
    return library;
}

Result<SnippetLibraryFile> decode(std::string_view data)
{
    QUILLMAR_TRY_ASSIGN(auto library, read(data));
    if (library.snippets.empty())
        return errorFor(ImportError::empty);
    return library;
}

std::string encode(const SnippetLibraryFile& library)
{
    auto snippets = nlohmann::json::array();
    for (const auto& snippet : library.snippets)
        snippets.push_back(snippet.toJson());
    nlohmann::json json = {
        { "format", formatMarker },
        { "version", version },
        { "groups", library.groups },
        { "snippets", std::move(snippets) },
    };
    return json.dump(/*indent=*/2, ' ', /*ensure_ascii=*/false, nlohmann::json::error_handler_t::replace) + "\n";
}

std::size_t conflicts(const std::vector<TextSnippet>& existing, const std::vector<TextSnippet>& incoming)
{
    std::unordered_set<std::string> triggers;
    for (const auto& snippet : existing)
        triggers.insert(snippet.trigger);
    return static_cast<std::size_t>(std::count_if(incoming.begin(), incoming.end(),
        [&](const TextSnippet& snippet) { return triggers.contains(snippet.trigger); }));
}

MergeResult merge(const std::vector<TextSnippet>& existing, const std::vector<std::string>& existingGroups,
    const std::vector<TextSnippet>& incoming, bool replaceConflicts)
{
    MergeResult result;
    result.snippets = existing;
    result.groups = existingGroups;
    std::unordered_map<std::string, std::size_t> byTrigger;
    std::unordered_set<std::string> ids;
    for (std::size_t index = 0; index < result.snippets.size(); ++index) {
        byTrigger.emplace(result.snippets[index].trigger, index);
        ids.insert(result.snippets[index].id);
    }
    for (const auto& snippet : incoming) {
        if (auto found = byTrigger.find(snippet.trigger); found != byTrigger.end()) {
            if (!replaceConflicts) {
                ++result.skipped;
                continue;
            }
            auto& kept = result.snippets[found->second];
            auto id = kept.id;
            kept = snippet;
            kept.id = std::move(id);
            addGroup(result.groups, kept.group);
            ++result.replaced;
            continue;
        }
        auto added = snippet;
        if (added.id.empty() || ids.contains(added.id))
            added.id = makeUuid();
        ids.insert(added.id);
        byTrigger.emplace(added.trigger, result.snippets.size());
        addGroup(result.groups, added.group);
        result.snippets.push_back(std::move(added));
        ++result.added;
    }
    return result;
}

} // namespace quillmar::SnippetLibrary
