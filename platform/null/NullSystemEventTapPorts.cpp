#include "core/eventtap/SystemEventTapPorts.h"
#include "platform/null/NullEventTapPorts.h"

namespace quillmar {

SystemEventTapPorts makeSystemEventTapPorts()
{
    return { std::make_unique<NullEventTapSource>() };
}

} // namespace quillmar
