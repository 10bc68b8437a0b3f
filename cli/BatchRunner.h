#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace quillmar::cli {

// `--batch`: reads standard input line by line and prints exactly one line per input line, in order.
// `answer` turns one line (without its line break; a trailing carriage return is dropped) into one line
// of output; it must not contain a line break. Always succeeds, so the command exits 0.
void runBatch(std::istream& in, std::ostream& out, const std::function<std::string(std::string_view line)>& answer);

} // namespace quillmar::cli
