#pragma once

#include <map>
#include <string>
#include <string_view>

namespace quillmar {

// The top-level "key: value" lines of a YAML document, as strings, which is all that update manifests
// and their configuration files need. Not a YAML parser:
// - a line is split at its first colon followed by a space or the end of the line;
// - indented lines (nested structures), list items ("- "), comment lines ("#"), document markers ("---",
//   "...") and lines without such a colon are skipped;
// - a value with nothing after the colon introduces a nested structure and is not collected;
// - a value wrapped in single or double quotes loses them (up to the next quote of its kind; no escapes
//   are read); an unquoted value ends before " #" (a trailing comment);
// - the first occurrence of a repeated key wins.
std::map<std::string, std::string, std::less<>> flatYamlScalars(std::string_view text);

} // namespace quillmar
