#include "core/windows/DragChord.h"

#include "core/base/RawValueTable.h"
#include "core/desktop/InputEvent.h"

namespace quillmar {

namespace {

constexpr auto raws = rawValueTable<DragChord>({
    { DragChord::controlOption, "controlOption" },
    { DragChord::controlCommand, "controlCommand" },
    { DragChord::optionCommand, "optionCommand" },
    { DragChord::controlOptionCommand, "controlOptionCommand" },
});

} // namespace

std::string_view rawValue(DragChord chord)
{
    return raws.rawValue(chord);
}

std::optional<DragChord> dragChordFromRawValue(std::string_view raw)
{
    return raws.fromRawValue(raw);
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
