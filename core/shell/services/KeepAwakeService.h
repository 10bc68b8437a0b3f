#pragma once

namespace quillmar {

// Keeping the machine awake.
class KeepAwakeService {
public:
    virtual ~KeepAwakeService() = default;

    virtual bool isActive() const = 0;
    virtual void toggle() = 0;
    // Ends keep-awake and restores normal sleep.
    virtual void stop() = 0;
};

} // namespace quillmar
