#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

namespace quillmar {

// One snippet, serialised under these key names (its text under "text").
struct TextSnippet {
    std::string id;
    std::string trigger;
    std::string name;  // optional display name
    std::string text;
    std::string group; // empty: no group
    bool expandsImmediately = false; // "As soon as you type it"; otherwise after a space
    bool ignoresCase = false;        // "Match uppercase and lowercase"
    bool showsInMenu = true;         // "Show in the snippet menu"

    bool operator==(const TextSnippet&) const = default;

    // The first line of the text, without its line break.
    std::string firstLine() const;
    // The name, or the first line when the name is empty (or only whitespace).
    std::string displayName() const;

    nlohmann::json toJson() const;

    // Outside data: never throws. None without a string trigger and text; an absent or non-string id
    // reads as empty (the library gives it one); other fields of the wrong type take their defaults.
    static std::optional<TextSnippet> fromJson(const nlohmann::json& json);
};

} // namespace quillmar
