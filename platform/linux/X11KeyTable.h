#pragma once

#include <cstdint>
#include <optional>

namespace quillmar {

// The one table between X keysyms and the core's virtual key codes, and the modifier translation between
// an X state mask and the core's Carbon mask and event flags. Pure: no server needed.
namespace X11KeyTable {

using Keysym = std::uint32_t;

// The virtual key code of a keysym. Letters map in both cases; keypad keysyms map with and without
// NumLock (KP_1 and KP_End are the same key). None for a keysym the core has no code for.
std::optional<std::uint32_t> keyCode(Keysym keysym);

// The keysym a virtual key code is registered and looked up under: the unshifted symbol (lower-case
// letters, KP_1 for keypad 1). None for a code outside the vocabulary.
std::optional<Keysym> keysym(std::uint32_t keyCode);

// Whether the code is one of the keys that only change modifiers (Shift, Control, ...).
bool isModifierKey(std::uint32_t keyCode);

// X core state bits.
namespace X11Modifier {
inline constexpr std::uint16_t shift = 1 << 0;
inline constexpr std::uint16_t lock = 1 << 1;
inline constexpr std::uint16_t control = 1 << 2;
inline constexpr std::uint16_t mod1 = 1 << 3; // Alt
inline constexpr std::uint16_t mod4 = 1 << 6; // Super
} // namespace X11Modifier

// Control, Alt (Mod1), Shift and Super (Mod4) as the Carbon mask (control, option, shift, command);
// other bits are dropped.
std::uint32_t carbonModifiers(std::uint16_t state);

// The X state mask of a Carbon mask; bits other than the four are dropped.
std::uint16_t x11Modifiers(std::uint32_t carbon);

// The core's event flags of an X state mask (Lock is caps lock).
std::uint64_t eventFlags(std::uint16_t state);

// The X state mask of event flags; the inverse of eventFlags.
std::uint16_t x11ModifiersFromFlags(std::uint64_t flags);

} // namespace X11KeyTable

} // namespace quillmar
