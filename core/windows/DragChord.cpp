#include "core/windows/DragChord.h"

#include <array>

#include "core/eventtap/InputEvent.h"

namespace quillmar {

namespace {

constexpr std::array<std::string_view, 4> raws { "controlOption", "controlCommand", "optionCommand",
    "controlOptionCommand" };

} // namespace

std::string_view rawValue(DragChord chord)
{
    return raws[static_cast<std::size_t>(chord)];
}

std::optional<DragChord> dragChordFromRawValue(std::string_view raw)
{
    for (std::size_t i = 0; i < raws.size(); ++i) {
        if (raws[i] == raw)
            return static_cast<DragChord>(i);
    }
    return std::nullopt;
}

std::uint64_t modifierFlags(DragChord chord)
{
    using namespace EventFlags;
    switch (chord) {
    case DragChord::controlOption:
        return control | option;
    case DragChord::controlCommand:
        return control | command;
    case DragChord::optionCommand:
        return option | command;
    case DragChord::controlOptionCommand:
        return control | option | command;
    }
    return 0;
}

bool isHeld(DragChord chord, std::uint64_t flags)
{
    using namespace EventFlags;
    return (flags & (control | option | command)) == modifierFlags(chord);
}

} // namespace quillmar
