#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

// The words of an application's name, as the leftover search compares them.
namespace NameTokens {

// Words that say what kind of program something is, not which one; never a token.
inline constexpr std::array<std::string_view, 11> stopWords {
    "app", "mac", "helper", "agent", "daemon", "service", "updater", "launcher", "plugin", "pro", "lite",
};

// `text` (UTF-8) split into words at every character that is neither a letter nor a number (Unicode
// general categories L, M and N, so a combining accent stays inside its word), each lower-cased (the
// full Unicode mapping), in order. Words of 3 code points or fewer and the stop words are dropped;
// ill-formed UTF-8 is dropped. "Visual Studio Code" gives ["visual", "studio", "code"];
// "HP Smart 2.0" gives ["smart"].
std::vector<std::string> split(std::string_view text);

} // namespace NameTokens

} // namespace quillmar
