#pragma once

namespace quillmar {

// The menu-bar countdown timer. The base does nothing.
class CountdownService {
public:
    virtual ~CountdownService() = default;

    virtual bool isRunning() const { return false; }
    virtual void cancel() { }
};

} // namespace quillmar
