#pragma once

namespace quillmar {

// The trackpad's feedback. Main thread.
class Haptics {
public:
    virtual ~Haptics() = default;

    // One alignment tap, now. Nothing where the hardware has none.
    virtual void performAlignment() = 0;
};

} // namespace quillmar
