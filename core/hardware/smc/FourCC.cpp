#include "core/hardware/smc/FourCC.h"

namespace quillmar {

std::optional<std::uint32_t> FourCC::code(std::string_view text)
{
    if (text.size() != 4)
        return std::nullopt;
    std::uint32_t packed = 0;
    for (char character : text)
        packed = packed << 8 | static_cast<unsigned char>(character);
    return packed;
}

std::string FourCC::string(std::uint32_t code)
{
    std::string text(4, '\0');
    for (std::size_t index = 0; index < 4; ++index)
        text[index] = static_cast<char>(code >> (24 - 8 * index) & 0xFFu);
    return text;
}

} // namespace quillmar
