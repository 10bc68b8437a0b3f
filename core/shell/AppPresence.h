#pragma once

namespace quillmar {

// Brings the application's own windows to the front when they open (port).
class AppPresence {
public:
    virtual ~AppPresence() = default;

    virtual void start() = 0;
};

} // namespace quillmar
