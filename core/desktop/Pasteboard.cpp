#include "core/desktop/Pasteboard.h"

#include "core/desktop/PasteboardTypes.h"

namespace quillmar {

std::optional<std::string> PasteboardReading::preferredText() const
{
    for (auto type : PasteboardTypes::text) {
        if (auto found = strings.find(std::string(type)); found != strings.end())
            return found->second;
    }
    return std::nullopt;
}

} // namespace quillmar
