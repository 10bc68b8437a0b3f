#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace quillmar::cli {

// The one way the command line writes JSON: compact on one line, UTF-8 kept as it is, and bytes that are
// not valid UTF-8 (file names and arguments may hold any) replaced by U+FFFD instead of throwing.
std::string jsonText(const nlohmann::json& value);
std::string jsonText(const nlohmann::ordered_json& value);

} // namespace quillmar::cli
