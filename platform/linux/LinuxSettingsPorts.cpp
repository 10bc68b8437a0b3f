#include "core/settings/SystemSettingsPorts.h"
#include "platform/linux/XdgFileLocations.h"

namespace quillmar {

SystemSettingsPorts makeSystemSettingsPorts()
{
    return { std::make_unique<XdgFileLocations>() };
}

} // namespace quillmar
