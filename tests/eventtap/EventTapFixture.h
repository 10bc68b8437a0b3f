#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "core/base/Diagnostics.h"
#include "core/eventtap/EventTap.h"
#include "core/runtime/VirtualRuntime.h"
#include "tests/eventtap/FakeEventTapSource.h"

namespace quillmar {

// Readable failures: "type 10 key 7 flags 0x100000 at (0, 0) scroll (0, 0) user data 0x514c4d52".
inline void PrintTo(const InputEvent& event, std::ostream* out)
{
    *out << fmt::format("type {} key {} flags {:#x} at ({}, {}) scroll ({}, {}) user data {:#x}", event.type,
        event.keyCode, event.flags, event.location.x, event.location.y, event.scrollDeltaX, event.scrollDeltaY,
        event.sourceUserData);
}

// A shared tap on virtual time over the recording source, with diagnostics captured.
class EventTapFixture : public testing::Test {
protected:
    void SetUp() override
    {
        setDiagnosticSink([this](std::string_view line) { diagnostics.emplace_back(line); });
    }

    // Every tap operation, the removals included, must have come from the worker's queue.
    void TearDown() override
    {
        tap.reset();
        setDiagnosticSink({});
        EXPECT_THAT(source.callingQueues, testing::Each(std::string(EventTapWorker::queueLabel)));
    }

    // The tap reads the trust when it is made, so tests set `source.trusted` first.
    EventTap& makeTap()
    {
        tap.emplace(runtime, source);
        runtime.runUntilIdle();
        return *tap;
    }

    // Registers a handler that appends `name` to `ran` and passes the event on unchanged.
    void registerRecorder(const std::string& name, std::vector<std::uint32_t> types, ListenOnly listenOnly)
    {
        tap->registerHandler(name, std::move(types), listenOnly, [this, name](const InputEvent& event) {
            EXPECT_TRUE(runtime.mainQueue().isMainThread()) << name;
            ran.push_back(name);
            return std::optional<InputEvent>(event);
        });
    }

    // Delivers through the filter tap and runs everything that follows; the verdict the system gets.
    std::optional<InputEvent> filter(const InputEvent& event)
    {
        auto delivery = source.deliverFilter(event);
        runtime.runUntilIdle();
        EXPECT_TRUE(delivery->done);
        return delivery->verdict;
    }

    static InputEvent keyDown(std::uint32_t keyCode)
    {
        InputEvent event;
        event.type = EventType::keyDown;
        event.keyCode = keyCode;
        return event;
    }

    // Clears the recorded tap calls, so that a test looks only at what its next step causes.
    std::vector<std::string> takeCalls()
    {
        runtime.runUntilIdle();
        auto calls = std::move(source.calls);
        source.calls.clear();
        return calls;
    }

    VirtualRuntime runtime;
    FakeEventTapSource source { runtime };
    std::optional<EventTap> tap;
    std::vector<std::string> ran;
    std::vector<std::string> diagnostics;
};

} // namespace quillmar
