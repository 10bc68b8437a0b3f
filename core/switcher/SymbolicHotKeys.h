#pragma once

#include <cstdint>
#include <optional>

namespace quillmar {

// The system's own keyboard shortcuts, numbered (1 is the application switcher's Command-Tab), through
// private functions resolved at run time. Main thread.
class SymbolicHotKeys {
public:
    // A shortcut's key: virtual key code and modifier flags (EventFlags bits).
    struct Value {
        std::uint32_t keyCode = 0;
        std::uint64_t flags = 0;
        friend bool operator==(const Value&, const Value&) = default;
    };

    static constexpr int applicationSwitcher = 1;

    virtual ~SymbolicHotKeys() = default;

    // None when the shortcut can't be read or the functions are missing.
    virtual std::optional<Value> value(int hotKey) = 0;
    // False when the functions are missing or the system refused.
    virtual bool setEnabled(int hotKey, bool enabled) = 0;
};

} // namespace quillmar
