#pragma once

#include "core/switcher/SymbolicHotKeys.h"

namespace quillmar {

// No system shortcuts to read or switch: the system switcher is never taken over.
class UnsupportedSymbolicHotKeys final : public SymbolicHotKeys {
public:
    std::optional<Value> value(int hotKey) override;
    bool setEnabled(int hotKey, bool enabled) override;
};

} // namespace quillmar
