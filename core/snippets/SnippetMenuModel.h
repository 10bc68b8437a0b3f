#pragma once

#include <string_view>
#include <vector>

#include "core/snippets/TextSnippet.h"

namespace quillmar {

// The searchable snippet menu opened at the text cursor.
namespace SnippetMenuModel {

inline constexpr std::string_view accessibilityReason = "Allow Accessibility to insert snippets";
inline constexpr std::string_view hiddenLabel = "Hidden from the snippet menu";

// The snippets shown in the menu whose trigger, display name or text contain `query` (case and accents
// folded, surrounding whitespace ignored; empty shows them all), in library order.
std::vector<TextSnippet> filter(const std::vector<TextSnippet>& snippets, std::string_view query);

} // namespace SnippetMenuModel

} // namespace quillmar
