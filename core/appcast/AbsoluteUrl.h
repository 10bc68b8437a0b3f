#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// An absolute URL as a feed writes it: a scheme ("https", "file", "mailto", ...), a colon, and then a host
// ("//example.com/...") or a path ("mailto:a@b", "file:///x"). The text is kept as written; it must hold no
// white space or control characters, so callers trim first. Relative references ("notes.html") and a
// bare scheme ("https:", "https://") are refused.
class AbsoluteUrl final {
public:
    AbsoluteUrl() = delete;

    static std::optional<std::string> validated(std::string_view text);
};

} // namespace quillmar
