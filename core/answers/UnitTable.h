#pragma once

#include <span>
#include <string_view>

#include "core/answers/UnitInfo.h"

namespace quillmar {

// One alternative spelling (in lower case) of a unit, or one default conversion: `from` → `to`.
struct UnitNamePair {
    std::string_view from;
    std::string_view to;
};

// The converter's tables: the 95 units in category order, the spellings that lead to them, and the
// conversions made when a query names no target.
class UnitTable final {
public:
    static std::span<const UnitInfo> units();
    static const UnitInfo* unitByLabel(std::string_view label);

    // Alternative spellings in lower case ("miles", "sq ft", "celsius") → label.
    static std::span<const UnitNamePair> aliases();
    // Rate spellings in lower case ("kbps", "mbps", "gbps") → the bit unit's label.
    static std::span<const UnitNamePair> bitAliases();
    // The words between the source quantity and the target unit ("in", "to", "as", ...).
    static std::span<const std::string_view> connectors();
    // Source label → the label it converts to when the query names no target (34 rows).
    static std::span<const UnitNamePair> defaultTargets();
};

} // namespace quillmar
