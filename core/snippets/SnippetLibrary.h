#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/snippets/TextSnippet.h"

namespace quillmar {

// The export and import format, also the form the library is stored in:
// {"format":"quillmar.snippets","version":1,"groups":[…],"snippets":[{…TextSnippet…}]}.
struct SnippetLibraryFile {
    std::vector<TextSnippet> snippets;
    std::vector<std::string> groups; // the group order

    bool operator==(const SnippetLibraryFile&) const = default;
};

// What an import may run into. The title heads the alert, the message explains.
enum class ImportError { notALibrary, empty };

struct MergeResult {
    std::vector<TextSnippet> snippets;
    std::vector<std::string> groups;
    std::size_t added = 0;
    std::size_t replaced = 0;
    std::size_t skipped = 0;
};

namespace SnippetLibrary {

inline constexpr std::string_view formatMarker = "quillmar.snippets";
inline constexpr int version = 1;
inline constexpr std::string_view defaultFileName = "Quillmar Snippets.json";

inline constexpr std::string_view conflictQuestion = "Replace yours with the imported text, or keep yours and skip those?";
inline constexpr std::string_view importedTitle = "Snippets imported";
inline constexpr std::string_view importFailedTitle = "Couldn't import snippets";
inline constexpr std::string_view exportFailedTitle = "Couldn't export snippets";
inline constexpr std::string_view deleteWarning = "This snippet will no longer expand. This can't be undone.";

std::string_view title(ImportError error);
std::string_view message(ImportError error);
// The ImportError an Error from `decode` stands for.
ImportError importError(const Error& error);

// An import: the library in `data`. Errors (code "snippets.notALibrary" or "snippets.empty", the message
// the ImportError's) for data that is not a library, and for blank data or a library without a readable
// snippet. Outside data: never throws. Entries that are not snippets are left out; a missing or repeated id
// gets a fresh one; groups keep their first spelling and order, blanks dropped.
Result<SnippetLibraryFile> decode(std::string_view data);

// The same for the stored library, where having no snippets is fine.
Result<SnippetLibraryFile> read(std::string_view data);

std::string encode(const SnippetLibraryFile& library);

// How many incoming snippets have a trigger that an existing snippet already uses.
std::size_t conflicts(const std::vector<TextSnippet>& existing, const std::vector<TextSnippet>& incoming);

// Adds the incoming snippets. A conflicting one (same trigger as a snippet already there, including one
// added earlier in this merge) replaces that snippet's content in place, keeping its id, or is skipped.
// An added snippet whose id is taken gets a fresh one. Groups that the added or replacing snippets name
// follow the existing ones in the order met.
MergeResult merge(const std::vector<TextSnippet>& existing, const std::vector<std::string>& existingGroups,
    const std::vector<TextSnippet>& incoming, bool replaceConflicts);

} // namespace SnippetLibrary

} // namespace quillmar
