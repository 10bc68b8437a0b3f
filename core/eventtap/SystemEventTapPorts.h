#pragma once

#include <memory>

#include "core/eventtap/EventTapSource.h"

namespace quillmar {

// The ports of the shared event tap on the system being built, owned together. The platform layer defines it
// once per system in quillmar_eventtap_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemEventTapPorts {
    std::unique_ptr<EventTapSource> source;
};

SystemEventTapPorts makeSystemEventTapPorts();

} // namespace quillmar
