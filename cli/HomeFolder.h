#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "cli/CliContext.h"

namespace quillmar::cli {

inline constexpr std::string_view noHomeSentence = "HOME is not set, so there is no home folder to look in.";

// The user's home folder from HOME, made absolute and standardised. When HOME is unset or empty, refuses
// with `noHomeSentence` (exit 1) and returns none: no command guesses a home folder.
std::optional<std::filesystem::path> homeFolder(CliContext& context);

} // namespace quillmar::cli
