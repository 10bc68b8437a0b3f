#pragma once

namespace quillmar {

// The scratchpad's notes, which save themselves shortly after each edit.
class ScratchpadService {
public:
    virtual ~ScratchpadService() = default;

    // True while a delayed save is scheduled and not cancelled.
    virtual bool hasPendingSave() const = 0;
    // Cancels the delayed save and writes the notes at once.
    virtual void saveNow() = 0;
};

} // namespace quillmar
