#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace quillmar {

// The identity a hot key is registered under and reported back with: a four-character signature that
// marks the application's own hot keys and a number that tells them apart.
struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t number = 0;

    bool operator==(const HotKeyID&) const = default;
};

// The system's handle on one registered hot key; only the registrar that issued it knows what it means.
using HotKeyRef = std::uint64_t;

// The system's global hot keys (the Carbon event manager on macOS). Used from the main thread.
class HotKeyRegistrar {
public:
    virtual ~HotKeyRegistrar() = default;

    // Registers `keyCode` (a virtual key code) with `modifiers` (a Carbon modifier mask) as a hot key
    // reported with `id`. None when the system refuses, for instance because another application holds
    // the combination.
    virtual std::optional<HotKeyRef> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id) = 0;

    // Releases a hot key that `registerHotKey` returned; the key is not reported after this returns.
    virtual void unregisterHotKey(HotKeyRef ref) = 0;

    // Replaces the function told about presses; an empty function stops the reports. The system may call
    // it on any thread, so it must not touch main-thread state itself.
    virtual void setPressedHandler(std::function<void(HotKeyID)> handler) = 0;
};

} // namespace quillmar
