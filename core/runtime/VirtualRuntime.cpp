#include "core/runtime/VirtualRuntime.h"

#include <cstdio>
#include <cstdlib>

namespace quillmar {

namespace {

class VirtualClock final : public Clock {
public:
    explicit VirtualClock(VirtualRuntime& runtime) : m_runtime(runtime) { }
    WallTime now() const override { return m_runtime.now(); }
    Duration uptime() const override { return m_runtime.uptime(); }
    // A sleeping thread holds up its own queue; the clock moves on without running other work.
    void sleepFor(Duration duration) override { m_runtime.moveClock(m_runtime.uptime() + duration); }

private:
    VirtualRuntime& m_runtime;
};

class VirtualMainQueue final : public MainQueue {
public:
    explicit VirtualMainQueue(VirtualRuntime& runtime) : m_runtime(runtime) { }
    void post(Task task) override { m_runtime.enqueue(nullptr, Duration::zero(), std::move(task)); }
    WorkItemHandle postAfter(Duration delay, Task task) override { return m_runtime.enqueue(nullptr, delay, std::move(task)); }
    bool isMainThread() const override { return m_runtime.onOwnerThread() && !m_runtime.runningSerial(); }

private:
    VirtualRuntime& m_runtime;
};

class VirtualSerialQueue final : public SerialQueue {
public:
    VirtualSerialQueue(VirtualRuntime& runtime, std::string label) : m_runtime(runtime), m_label(std::move(label)) { }
    void post(Task task) override { m_runtime.enqueue(this, Duration::zero(), std::move(task)); }
    WorkItemHandle postAfter(Duration delay, Task task) override { return m_runtime.enqueue(this, delay, std::move(task)); }
    const std::string& label() const override { return m_label; }
    bool isCurrent() const override { return m_runtime.onOwnerThread() && m_runtime.runningSerial() == this; }

private:
    VirtualRuntime& m_runtime;
    std::string m_label;
};

class VirtualSignal final : public Signal {
public:
    explicit VirtualSignal(VirtualRuntime& runtime) : m_runtime(runtime) { }

    void raise() override { m_raised = true; }
    bool isRaised() const override { return m_raised; }

    // Waiting drives the timeline: due work runs (and may raise the flag) until the deadline passes.
    bool waitFor(Duration timeout) override
    {
        auto deadline = m_runtime.uptime() + timeout;
        while (!m_raised) {
            if (m_runtime.uptime() >= deadline)
                return false;
            if (!m_runtime.runNext(deadline)) {
                m_runtime.moveClock(deadline);
                return false;
            }
        }
        return true;
    }

    void wait() override
    {
        while (!m_raised) {
            if (!m_runtime.runNext(Duration::max())) {
                std::fprintf(stderr, "quillmar: virtual signal waited with nothing left to run\n");
                std::abort();
            }
        }
    }

private:
    VirtualRuntime& m_runtime;
    bool m_raised = false;
};

} // namespace

VirtualRuntime::VirtualRuntime()
    : m_wallOrigin(std::chrono::sys_days(std::chrono::year(2026) / 1 / 1))
    , m_owner(std::this_thread::get_id())
    , m_clock(std::make_unique<VirtualClock>(*this))
    , m_main(std::make_unique<VirtualMainQueue>(*this))
{
}

VirtualRuntime::~VirtualRuntime() = default;

Clock& VirtualRuntime::clock()
{
    return *m_clock;
}

MainQueue& VirtualRuntime::mainQueue()
{
    return *m_main;
}

std::unique_ptr<SerialQueue> VirtualRuntime::makeSerialQueue(std::string label)
{
    return std::make_unique<VirtualSerialQueue>(*this, std::move(label));
}

std::unique_ptr<Signal> VirtualRuntime::makeSignal()
{
    return std::make_unique<VirtualSignal>(*this);
}

WorkItemHandle VirtualRuntime::enqueue(const SerialQueue* serial, Duration delay, Task task)
{
    auto item = std::make_shared<WorkItem>();
    std::lock_guard lock(m_mutex);
    m_entries.emplace(Key { m_uptime + delay, m_nextSequence++ }, Entry { serial, std::move(task), item });
    return item;
}

bool VirtualRuntime::runNext(Duration limit)
{
    Entry entry;
    {
        std::lock_guard lock(m_mutex);
        for (;;) {
            if (m_entries.empty() || m_entries.begin()->first.due > limit)
                return false;
            auto node = m_entries.extract(m_entries.begin());
            if (node.mapped().item->isCancelled())
                continue;
            if (node.key().due > m_uptime)
                m_uptime = node.key().due;
            entry = std::move(node.mapped());
            break;
        }
    }
    const SerialQueue* previous = m_running;
    m_running = entry.serial;
    entry.task();
    m_running = previous;
    return true;
}

void VirtualRuntime::advance(Duration duration)
{
    auto target = uptime() + duration;
    while (runNext(target)) { }
    moveClock(target);
}

void VirtualRuntime::runUntilIdle()
{
    while (runNext(uptime())) { }
}

void VirtualRuntime::setWallTime(WallTime time)
{
    std::lock_guard lock(m_mutex);
    m_wallOrigin = time;
    m_wallOriginUptime = m_uptime;
}

std::size_t VirtualRuntime::pendingCount() const
{
    std::lock_guard lock(m_mutex);
    std::size_t count = 0;
    for (const auto& entry : m_entries) {
        if (!entry.second.item->isCancelled())
            ++count;
    }
    return count;
}

Duration VirtualRuntime::uptime() const
{
    std::lock_guard lock(m_mutex);
    return m_uptime;
}

WallTime VirtualRuntime::now() const
{
    std::lock_guard lock(m_mutex);
    return m_wallOrigin + std::chrono::duration_cast<WallTime::duration>(m_uptime - m_wallOriginUptime);
}

void VirtualRuntime::moveClock(Duration to)
{
    std::lock_guard lock(m_mutex);
    if (to > m_uptime)
        m_uptime = to;
}

} // namespace quillmar
