#include "core/runtime/SystemRuntime.h"

#include <condition_variable>
#include <mutex>

#include "core/runtime/ThreadSerialQueue.h"

namespace quillmar {

namespace {

class ThreadSignal final : public Signal {
public:
    void raise() override
    {
        {
            std::lock_guard lock(m_mutex);
            m_raised = true;
        }
        m_changed.notify_all();
    }

    bool isRaised() const override
    {
        std::lock_guard lock(m_mutex);
        return m_raised;
    }

    bool waitFor(Duration timeout) override
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, timeout, [this] { return m_raised; });
    }

    void wait() override
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_raised; });
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_raised = false;
};

} // namespace

SystemRuntime::SystemRuntime()
    : m_loop(m_clock)
{
}

std::unique_ptr<SerialQueue> SystemRuntime::makeSerialQueue(std::string label)
{
    return std::make_unique<ThreadSerialQueue>(std::move(label), m_clock);
}

std::unique_ptr<Signal> SystemRuntime::makeSignal()
{
    return std::make_unique<ThreadSignal>();
}

} // namespace quillmar
