#include "core/settings/SystemSettingsPorts.h"
#include "platform/null/NullSettingsPorts.h"

namespace quillmar {

SystemSettingsPorts makeSystemSettingsPorts()
{
    return { std::make_unique<NullFileLocations>() };
}

} // namespace quillmar
