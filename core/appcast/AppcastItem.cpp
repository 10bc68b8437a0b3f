#include "core/appcast/AppcastItem.h"

namespace quillmar {

bool AppcastItem::isBlank() const
{
    return *this == AppcastItem {};
}

} // namespace quillmar
