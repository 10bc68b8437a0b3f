#pragma once

#include "core/runtime/Clock.h"
#include "core/runtime/WorkItem.h"

namespace quillmar {

// Somewhere work runs in order: the main queue or a serial background queue.
class TaskQueue {
public:
    virtual ~TaskQueue() = default;

    // Runs `task` after the work already posted. Callable from any thread.
    virtual void post(Task task) = 0;

    // Runs `task` once `delay` has passed (measured on the uptime clock) unless the returned item is
    // cancelled first. Callable from any thread.
    virtual WorkItemHandle postAfter(Duration delay, Task task) = 0;
};

} // namespace quillmar
