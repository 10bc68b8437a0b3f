#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "core/clipboard/ClipboardStore.h"
#include "core/runtime/SystemClock.h"
#include "core/runtime/ThreadSerialQueue.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "tests/clipboard/ClipboardFakes.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

constexpr auto deadline = std::chrono::seconds(10);

// Virtual time, except that pasteboard reads get a real thread, so that one can hang.
class RealReaderRuntime final : public Runtime {
public:
    Clock& clock() override { return m_virtual.clock(); }
    MainQueue& mainQueue() override { return m_virtual.mainQueue(); }
    std::unique_ptr<SerialQueue> makeSerialQueue(std::string label) override
    {
        if (label != ClipboardStore::readQueueLabel)
            return m_virtual.makeSerialQueue(std::move(label));
        ++readQueues;
        return std::make_unique<ThreadSerialQueue>(std::move(label), m_systemClock);
    }
    std::unique_ptr<Signal> makeSignal() override { return m_virtual.makeSignal(); }

    void advance(Duration duration) { m_virtual.advance(duration); }

    int readQueues = 0;

private:
    VirtualRuntime m_virtual;
    SystemClock m_systemClock;
};

// Every read blocks until released. It may return after the test is over, so it lives as long as the
// process does.
class HangingPasteboard final : public Pasteboard {
public:
    static HangingPasteboard& shared()
    {
        static HangingPasteboard pasteboard;
        return pasteboard;
    }

    std::int64_t changeCount() const override { return m_changeCount; }
    PasteboardReading read() override
    {
        std::unique_lock lock(m_mutex);
        ++m_entered;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_released; });
        return {};
    }
    bool write(const PasteboardWriting&) override { return false; }
    void clear() override { }

    void copy() { ++m_changeCount; }
    bool waitUntilEntered()
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, deadline, [this] { return m_entered > 0; });
    }
    void release()
    {
        std::lock_guard lock(m_mutex);
        m_released = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_entered = 0;
    bool m_released = false;
    std::atomic<std::int64_t> m_changeCount { 1 };
};

TEST(ClipboardStoreHungRead, HoldsUpNeitherFurtherReadsNorQuit)
{
    RealReaderRuntime runtime;
    TemporaryFolder temporary;
    Settings settings(std::make_unique<MemorySettingsBackend>());
    auto& pasteboard = HangingPasteboard::shared();
    FakeFrontApplications front;
    FakeSessionEvents session;
    FakeKeystrokes keys;
    FakeNotices notices;
    auto store = std::make_unique<ClipboardStore>(runtime, settings, temporary.path() / "Clipboard",
        ClipboardPorts { pasteboard, front, session, keys, notices });
    store->start();
    pasteboard.copy();
    runtime.advance(ClipboardStore::pollInterval);
    ASSERT_TRUE(pasteboard.waitUntilEntered());

    runtime.advance(ClipboardStore::readTimeout);
    EXPECT_FALSE(store->isReading()) << "abandoned";
    pasteboard.copy();
    runtime.advance(ClipboardStore::pollInterval * 4);
    EXPECT_EQ(runtime.readQueues, 1) << "no second reader while the first is out";

    // Should the store wait for the read, the watchdog lets the read go so that the test fails, not hangs.
    std::mutex mutex;
    std::condition_variable changed;
    bool destroyed = false;
    bool watchdogFired = false;
    std::thread watchdog([&] {
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, deadline, [&] { return destroyed; })) {
            watchdogFired = true;
            pasteboard.release();
        }
    });
    store.reset();
    {
        std::lock_guard lock(mutex);
        destroyed = true;
    }
    changed.notify_all();
    watchdog.join();
    EXPECT_FALSE(watchdogFired) << "destroying the store waited for a read that never returned";
    pasteboard.release();
}

} // namespace
} // namespace quillmar
