#pragma once

#include <cstdint>

namespace quillmar {

// The system's layout-independent virtual key codes: the position of a key on an ANSI keyboard, not the
// character it types. Letters are named after the key's ANSI legend.
namespace KeyCode {
inline constexpr std::uint32_t a = 0x00;
inline constexpr std::uint32_t s = 0x01;
inline constexpr std::uint32_t d = 0x02;
inline constexpr std::uint32_t f = 0x03;
inline constexpr std::uint32_t h = 0x04;
inline constexpr std::uint32_t g = 0x05;
inline constexpr std::uint32_t z = 0x06;
inline constexpr std::uint32_t x = 0x07;
inline constexpr std::uint32_t c = 0x08;
inline constexpr std::uint32_t v = 0x09;
inline constexpr std::uint32_t b = 0x0B;
inline constexpr std::uint32_t q = 0x0C;
inline constexpr std::uint32_t w = 0x0D;
inline constexpr std::uint32_t e = 0x0E;
inline constexpr std::uint32_t r = 0x0F;
inline constexpr std::uint32_t y = 0x10;
inline constexpr std::uint32_t t = 0x11;
inline constexpr std::uint32_t o = 0x1F;
inline constexpr std::uint32_t u = 0x20;
inline constexpr std::uint32_t i = 0x22;
inline constexpr std::uint32_t p = 0x23;
inline constexpr std::uint32_t l = 0x25;
inline constexpr std::uint32_t j = 0x26;
inline constexpr std::uint32_t k = 0x28;
inline constexpr std::uint32_t n = 0x2D;
inline constexpr std::uint32_t m = 0x2E;

inline constexpr std::uint32_t returnKey = 0x24;
inline constexpr std::uint32_t tab = 0x30;
inline constexpr std::uint32_t space = 0x31;
inline constexpr std::uint32_t grave = 0x32;
inline constexpr std::uint32_t deleteBackward = 0x33;
inline constexpr std::uint32_t escape = 0x35;
inline constexpr std::uint32_t keypadClear = 0x47;
inline constexpr std::uint32_t keypadEnter = 0x4C;
inline constexpr std::uint32_t home = 0x73;
inline constexpr std::uint32_t pageUp = 0x74;
inline constexpr std::uint32_t deleteForward = 0x75;
inline constexpr std::uint32_t end = 0x77;
inline constexpr std::uint32_t pageDown = 0x79;
inline constexpr std::uint32_t leftArrow = 0x7B;
inline constexpr std::uint32_t rightArrow = 0x7C;
inline constexpr std::uint32_t downArrow = 0x7D;
inline constexpr std::uint32_t upArrow = 0x7E;

// The function keys' codes are not contiguous.
inline constexpr std::uint32_t f1 = 0x7A;
inline constexpr std::uint32_t f2 = 0x78;
inline constexpr std::uint32_t f3 = 0x63;
inline constexpr std::uint32_t f4 = 0x76;
inline constexpr std::uint32_t f5 = 0x60;
inline constexpr std::uint32_t f6 = 0x61;
inline constexpr std::uint32_t f7 = 0x62;
inline constexpr std::uint32_t f8 = 0x64;
inline constexpr std::uint32_t f9 = 0x65;
inline constexpr std::uint32_t f10 = 0x6D;
inline constexpr std::uint32_t f11 = 0x67;
inline constexpr std::uint32_t f12 = 0x6F;
inline constexpr std::uint32_t f13 = 0x69;
inline constexpr std::uint32_t f14 = 0x6B;
inline constexpr std::uint32_t f15 = 0x71;
inline constexpr std::uint32_t f16 = 0x6A;
inline constexpr std::uint32_t f17 = 0x40;
inline constexpr std::uint32_t f18 = 0x4F;
inline constexpr std::uint32_t f19 = 0x50;
inline constexpr std::uint32_t f20 = 0x5A;

// Digits and punctuation.
inline constexpr std::uint32_t digit1 = 0x12;
inline constexpr std::uint32_t digit2 = 0x13;
inline constexpr std::uint32_t digit3 = 0x14;
inline constexpr std::uint32_t digit4 = 0x15;
inline constexpr std::uint32_t digit6 = 0x16;
inline constexpr std::uint32_t digit5 = 0x17;
inline constexpr std::uint32_t equal = 0x18;
inline constexpr std::uint32_t digit9 = 0x19;
inline constexpr std::uint32_t digit7 = 0x1A;
inline constexpr std::uint32_t minus = 0x1B;
inline constexpr std::uint32_t digit8 = 0x1C;
inline constexpr std::uint32_t digit0 = 0x1D;
inline constexpr std::uint32_t rightBracket = 0x1E;
inline constexpr std::uint32_t leftBracket = 0x21;
inline constexpr std::uint32_t quote = 0x27;
inline constexpr std::uint32_t semicolon = 0x29;
inline constexpr std::uint32_t backslash = 0x2A;
inline constexpr std::uint32_t comma = 0x2B;
inline constexpr std::uint32_t slash = 0x2C;
inline constexpr std::uint32_t period = 0x2F;

// The keypad.
inline constexpr std::uint32_t keypadDecimal = 0x41;
inline constexpr std::uint32_t keypadMultiply = 0x43;
inline constexpr std::uint32_t keypadPlus = 0x45;
inline constexpr std::uint32_t keypadDivide = 0x4B;
inline constexpr std::uint32_t keypadMinus = 0x4E;
inline constexpr std::uint32_t keypadEquals = 0x51;
inline constexpr std::uint32_t keypad0 = 0x52;
inline constexpr std::uint32_t keypad1 = 0x53;
inline constexpr std::uint32_t keypad2 = 0x54;
inline constexpr std::uint32_t keypad3 = 0x55;
inline constexpr std::uint32_t keypad4 = 0x56;
inline constexpr std::uint32_t keypad5 = 0x57;
inline constexpr std::uint32_t keypad6 = 0x58;
inline constexpr std::uint32_t keypad7 = 0x59;
inline constexpr std::uint32_t keypad8 = 0x5B;
inline constexpr std::uint32_t keypad9 = 0x5C;

// Help, where PC keyboards have Insert.
inline constexpr std::uint32_t help = 0x72;

// The modifier keys.
inline constexpr std::uint32_t rightCommand = 0x36;
inline constexpr std::uint32_t command = 0x37;
inline constexpr std::uint32_t shift = 0x38;
inline constexpr std::uint32_t capsLock = 0x39;
inline constexpr std::uint32_t option = 0x3A;
inline constexpr std::uint32_t control = 0x3B;
inline constexpr std::uint32_t rightShift = 0x3C;
inline constexpr std::uint32_t rightOption = 0x3D;
inline constexpr std::uint32_t rightControl = 0x3E;

// Command, Shift, Caps Lock, Option, Control, their right-hand twins and Function: the keys that only
// change modifier flags.
inline constexpr std::uint32_t firstModifier = 0x36;
inline constexpr std::uint32_t lastModifier = 0x3F;
} // namespace KeyCode

// The system's modifier bits in an event's flags (InputEvent::flags).
namespace EventFlags {
inline constexpr std::uint64_t capsLock = 0x10000;
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t function = 0x800000;
} // namespace EventFlags

} // namespace quillmar
