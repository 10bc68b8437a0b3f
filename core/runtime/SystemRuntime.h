#pragma once

#include "core/runtime/EventLoop.h"
#include "core/runtime/Runtime.h"
#include "core/runtime/SystemClock.h"

namespace quillmar {

// Real threads and real time. The thread that creates it becomes the main thread.
class SystemRuntime final : public Runtime {
public:
    SystemRuntime();

    Clock& clock() override { return m_clock; }
    MainQueue& mainQueue() override { return m_loop; }
    EventLoop& eventLoop() { return m_loop; }
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string label) override;
    std::unique_ptr<Signal> makeSignal() override;

private:
    SystemClock m_clock;
    EventLoop m_loop;
};

} // namespace quillmar
