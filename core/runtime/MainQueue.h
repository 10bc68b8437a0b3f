#pragma once

#include <string_view>

#include "core/runtime/TaskQueue.h"

namespace quillmar {

// The main thread's queue. Everything that owns state (stores, models, modules) is confined to it.
class MainQueue : public TaskQueue {
public:
    // True on the thread that runs the main queue.
    virtual bool isMainThread() const = 0;

    // Stops the process when called off the main thread, in every build type: touching confined state
    // from elsewhere is a programming error that must not go on silently. `who` names the object.
    void assertMainThread(std::string_view who) const;
};

} // namespace quillmar
