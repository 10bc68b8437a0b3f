#pragma once

namespace quillmar {

// The scratchpad's notes, which save themselves shortly after each edit. The base has nothing to save.
class ScratchpadService {
public:
    virtual ~ScratchpadService() = default;

    // True while a delayed save is scheduled and not cancelled.
    virtual bool hasPendingSave() const { return false; }
    // Cancels the delayed save and writes the notes at once.
    virtual void saveNow() { }
};

} // namespace quillmar
