#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class Collator;
U_NAMESPACE_END

namespace quillmar {

// Orders UTF-8 texts as the user's locale sorts them, ignoring case (accents still count). Under a "C" or
// "POSIX" locale, which states no language, the root order is used: code point order would put "Zoom"
// before "apple". Not thread-safe; make one per thread.
class TextCollation final {
public:
    TextCollation();
    ~TextCollation();
    TextCollation(const TextCollation&) = delete;
    TextCollation& operator=(const TextCollation&) = delete;

    // A byte string whose plain order is the collation order of `text`; for sorting many texts, compute
    // each key once.
    std::string sortKey(std::string_view text) const;

    // Negative, zero or positive as `a` sorts before, with or after `b`.
    int compare(std::string_view a, std::string_view b) const;

private:
    std::unique_ptr<icu::Collator> m_collator;
};

} // namespace quillmar
