#include "core/snippets/TextSnippet.h"

#include <algorithm>

namespace quillmar {

namespace {

std::string stringOr(const nlohmann::json& json, const char* key, std::string fallback)
{
    auto found = json.find(key);
    return found != json.end() && found->is_string() ? found->get<std::string>() : std::move(fallback);
}

bool boolOr(const nlohmann::json& json, const char* key, bool fallback)
{
    auto found = json.find(key);
    return found != json.end() && found->is_boolean() ? found->get<bool>() : fallback;
}

} // namespace

std::string TextSnippet::firstLine() const
{
    auto end = text.find_first_of("\r\n");
    return text.substr(0, end);
}

std::string TextSnippet::displayName() const
{
    bool blank = std::all_of(name.begin(), name.end(), [](char character) { return character == ' ' || character == '\t'; });
    return blank ? firstLine() : name;
}

nlohmann::json TextSnippet::toJson() const
{
    return {
        { "id", id },
        { "trigger", trigger },
        { "name", name },
        { "text", text },
        { "group", group },
        { "expandsImmediately", expandsImmediately },
        { "ignoresCase", ignoresCase },
        { "showsInMenu", showsInMenu },
    };
}

std::optional<TextSnippet> TextSnippet::fromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return std::nullopt;
    auto trigger = json.find("trigger");
    auto text = json.find("text");
    if (trigger == json.end() || !trigger->is_string() || text == json.end() || !text->is_string())
        return std::nullopt;
    TextSnippet snippet;
    snippet.id = stringOr(json, "id", "");
    snippet.trigger = trigger->get<std::string>();
    snippet.text = text->get<std::string>();
    snippet.name = stringOr(json, "name", "");
    snippet.group = stringOr(json, "group", "");
    snippet.expandsImmediately = boolOr(json, "expandsImmediately", false);
    snippet.ignoresCase = boolOr(json, "ignoresCase", false);
    snippet.showsInMenu = boolOr(json, "showsInMenu", true);
    return snippet;
}

} // namespace quillmar
