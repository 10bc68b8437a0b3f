#pragma once

namespace quillmar {

// The menu-bar countdown timer.
class CountdownService {
public:
    virtual ~CountdownService() = default;

    virtual bool isRunning() const = 0;
    virtual void cancel() = 0;
};

} // namespace quillmar
