#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// The SMC's four-character codes (keys such as "FNum", types such as "flt "), packed with the first
// character in the most significant byte.
struct FourCC {
    // None unless `text` is exactly four bytes.
    static std::optional<std::uint32_t> code(std::string_view text);

    // The four characters of `code`, most significant byte first.
    static std::string string(std::uint32_t code);
};

} // namespace quillmar
