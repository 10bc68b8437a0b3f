#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/shell/FeatureStore.h"
#include "core/shell/ModuleID.h"
#include "core/shell/Modules.h"
#include "core/shell/ShellServices.h"

namespace quillmar {

// One log that every recording fake writes to, so that tests can check the order across services.
using CallLog = std::vector<std::string>;

// Fills a ShellServices with fakes that log each call as "service.operation[ argument]".
ShellServices recordingServices(CallLog& log, bool keepAwakeActive = false, bool countdownRunning = false,
    bool scratchpadPending = false);

// The eleven modules, each logging "Name.apply", "Name.perform action" and "Name.shutdown".
Modules recordingModules(CallLog& log);

} // namespace quillmar
