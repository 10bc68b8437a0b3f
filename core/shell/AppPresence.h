#pragma once

namespace quillmar {

// Brings the application's own windows to the front when they open (port). The base does nothing.
class AppPresence {
public:
    virtual ~AppPresence() = default;

    virtual void start() { }
};

} // namespace quillmar
