#include "tests/platform/linux/DesktopTestSupport.h"

#include <memory>

#include <gtest/gtest.h>

#include "core/base/Diagnostics.h"
#include "tests/platform/linux/PrivateBus.h"

namespace quillmar {

namespace {

// One daemon for the whole binary, stopped after the last test even when tests fail.
class BusEnvironment final : public testing::Environment {
public:
    void SetUp() override
    {
        setDiagnosticSink([](std::string_view line) { testDiagnostics().add(line); });
        s_bus = std::make_unique<PrivateBus>();
        ASSERT_FALSE(s_bus->address().empty()) << s_bus->failure();
    }
    void TearDown() override { s_bus.reset(); }

    static std::unique_ptr<PrivateBus> s_bus;
};

std::unique_ptr<PrivateBus> BusEnvironment::s_bus;

[[maybe_unused]] testing::Environment* const environment = testing::AddGlobalTestEnvironment(new BusEnvironment);

} // namespace

const std::string& testBusAddress()
{
    return BusEnvironment::s_bus->address();
}

void DiagnosticLog::add(std::string_view line)
{
    {
        std::lock_guard lock(m_mutex);
        m_lines.emplace_back(line);
    }
    m_added.notify_all();
}

bool DiagnosticLog::waitFor(std::string_view text)
{
    std::unique_lock lock(m_mutex);
    return m_added.wait_for(lock, busDeadline, [&] {
        for (const auto& line : m_lines)
            if (line.find(text) != std::string::npos)
                return true;
        return false;
    });
}

DiagnosticLog& testDiagnostics()
{
    static DiagnosticLog log;
    return log;
}

void WaitingMainQueue::post(Task task)
{
    std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
}

WorkItemHandle WaitingMainQueue::postAfter(Duration, Task task)
{
    ADD_FAILURE() << "the D-Bus backends post nothing for later";
    post(std::move(task));
    return std::make_shared<WorkItem>();
}

void WaitingMainQueue::runPosted()
{
    std::deque<Task> tasks;
    {
        std::lock_guard lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (auto& task : tasks)
        task();
}

} // namespace quillmar
