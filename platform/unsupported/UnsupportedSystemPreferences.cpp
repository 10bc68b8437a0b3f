#include "platform/unsupported/UnsupportedSystemPreferences.h"

namespace quillmar {

std::optional<double> UnsupportedSystemPreferences::number(std::string_view, std::string_view) const
{
    return std::nullopt;
}

} // namespace quillmar
