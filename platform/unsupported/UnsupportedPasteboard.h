#pragma once

#include "core/clipboard/Pasteboard.h"

namespace quillmar {

// A pasteboard on a system without one the core can reach: always empty, never changes, refuses writes.
class UnsupportedPasteboard final : public Pasteboard {
public:
    std::int64_t changeCount() const override;
    PasteboardReading read() override;
    bool write(const PasteboardWriting& writing) override;
    void clear() override;
};

} // namespace quillmar
