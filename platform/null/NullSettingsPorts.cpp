#include "platform/null/NullSettingsPorts.h"

namespace quillmar {

std::filesystem::path NullFileLocations::settingsFile() const
{
    return "settings.json";
}

std::filesystem::path NullFileLocations::applicationSupport() const
{
    return "Quillmar";
}

} // namespace quillmar
