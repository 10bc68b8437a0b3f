#pragma once

#include <cstdint>

namespace quillmar {

// Asks applications to quit, as their Quit menu item would. Main thread.
class AppTerminator {
public:
    virtual ~AppTerminator() = default;

    // Sends the quit request; false when it could not be sent. The application may still refuse or ask the
    // user first, so success says nothing about whether it has quit.
    virtual bool terminate(std::int32_t pid) = 0;
    virtual bool isRunning(std::int32_t pid) const = 0;
};

} // namespace quillmar
