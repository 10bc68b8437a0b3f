#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillmar {

// The exact set of modifiers that turns a mouse press anywhere in a window into a move or resize. Shift may
// be held on top of it (for resizing); any other modifier spoils the chord.
enum class DragChord : unsigned char { controlOption, controlCommand, optionCommand, controlOptionCommand };

std::string_view rawValue(DragChord chord);
// None for a string that names no chord.
std::optional<DragChord> dragChordFromRawValue(std::string_view raw);

// The chord's EventFlags bits (Control 0x40000, Option 0x80000, Command 0x100000).
std::uint64_t modifierFlags(DragChord chord);

// Whether `flags` (an event's EventFlags) hold exactly the chord, Shift aside.
bool isHeld(DragChord chord, std::uint64_t flags);

} // namespace quillmar
