#pragma once

namespace quillmar {

// Keeping the machine awake. The base does nothing and is never active.
class KeepAwakeService {
public:
    virtual ~KeepAwakeService() = default;

    virtual bool isActive() const { return false; }
    virtual void toggle() { }
    // Ends keep-awake and restores normal sleep.
    virtual void stop() { }
};

} // namespace quillmar
