#pragma once

#include <array>
#include <span>
#include <string_view>

#include "core/shell/FeatureID.h"

namespace quillmar {

// The eleven feature modules, in the fixed order in which they are applied and shut down.
enum class ModuleID : unsigned char {
    island,
    capture,
    command,
    mixer,
    windows,
    input,
    displays,
    monitor,
    files,
    apps,
    tools,
};

inline constexpr std::array allModuleIDs {
    ModuleID::island, ModuleID::capture, ModuleID::command, ModuleID::mixer, ModuleID::windows, ModuleID::input,
    ModuleID::displays, ModuleID::monitor, ModuleID::files, ModuleID::apps, ModuleID::tools,
};

// "Island", "Capture", ...
std::string_view name(ModuleID module);

// The one record of which module owns which features; together the lists cover every feature once.
std::span<const FeatureID> ownedFeatures(ModuleID module);

} // namespace quillmar
