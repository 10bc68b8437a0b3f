#pragma once

#include <string>

#include "core/runtime/TaskQueue.h"

namespace quillmar {

// A named background queue that runs one task at a time, in order ("com.quillmar.clipboard.save").
class SerialQueue : public TaskQueue {
public:
    virtual const std::string& label() const = 0;

    // True while the calling code runs as one of this queue's tasks.
    virtual bool isCurrent() const = 0;
};

} // namespace quillmar
