#pragma once

#include <memory>
#include <string>

#include "core/runtime/Clock.h"
#include "core/runtime/MainQueue.h"
#include "core/runtime/SerialQueue.h"
#include "core/runtime/Signal.h"

namespace quillmar {

// The thread model in one place: the clock, the main queue, and factories for serial queues and signals.
// The system runtime uses real threads and time; the virtual runtime runs everything on the test's thread.
class Runtime {
public:
    virtual ~Runtime() = default;

    virtual Clock& clock() = 0;
    virtual MainQueue& mainQueue() = 0;
    virtual std::unique_ptr<SerialQueue> makeSerialQueue(std::string label) = 0;
    virtual std::unique_ptr<Signal> makeSignal() = 0;
};

} // namespace quillmar
