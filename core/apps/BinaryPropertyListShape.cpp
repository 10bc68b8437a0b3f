#include "core/apps/BinaryPropertyListShape.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace quillmar {

namespace {

constexpr std::size_t trailerSize = 32;
constexpr std::string_view magic = "bplist00";

// Big-endian unsigned integer of `width` bytes (1 to 8) at `offset`; none when it lies outside `bytes`.
std::optional<std::uint64_t> readUnsigned(std::string_view bytes, std::uint64_t offset, std::size_t width)
{
    if (width == 0 || width > 8 || offset > bytes.size() || bytes.size() - offset < width)
        return std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t index = 0; index < width; ++index)
        value = (value << 8) | static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(offset) + index]);
    return value;
}

struct Trailer {
    std::size_t offsetWidth = 0;
    std::size_t referenceWidth = 0;
    std::uint64_t objectCount = 0;
    std::uint64_t topObject = 0;
    std::uint64_t offsetTable = 0;
};

std::optional<Trailer> readTrailer(std::string_view bytes)
{
    if (bytes.size() < magic.size() + trailerSize || bytes.substr(0, magic.size()) != magic)
        return std::nullopt;
    auto start = bytes.size() - trailerSize;
    Trailer trailer;
    trailer.offsetWidth = static_cast<std::uint8_t>(bytes[start + 6]);
    trailer.referenceWidth = static_cast<std::uint8_t>(bytes[start + 7]);
    if (trailer.offsetWidth < 1 || trailer.offsetWidth > 8 || trailer.referenceWidth < 1 || trailer.referenceWidth > 8)
        return std::nullopt;
    trailer.objectCount = *readUnsigned(bytes, start + 8, 8);
    trailer.topObject = *readUnsigned(bytes, start + 16, 8);
    trailer.offsetTable = *readUnsigned(bytes, start + 24, 8);
    // Every object takes at least one byte before the table, so the count is bounded by the file size.
    if (trailer.objectCount == 0 || trailer.objectCount > bytes.size() || trailer.topObject >= trailer.objectCount)
        return std::nullopt;
    if (trailer.offsetTable < magic.size() || trailer.offsetTable > start
        || (start - trailer.offsetTable) / trailer.offsetWidth < trailer.objectCount)
        return std::nullopt;
    return trailer;
}

// The length field of the object whose marker is at `offset`: the low four bits of the marker, or, when
// they are all set, an integer object that follows (marker 0x1n, then 2^n bytes). Also answers where the
// object's contents begin.
struct Length {
    std::uint64_t count = 0;
    std::uint64_t contents = 0;
};

std::optional<Length> readLength(std::string_view bytes, std::uint64_t offset)
{
    auto marker = static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(offset)]);
    Length length { static_cast<std::uint64_t>(marker & 0x0F), offset + 1 };
    if (length.count != 0x0F)
        return length;
    auto countMarker = readUnsigned(bytes, length.contents, 1);
    if (!countMarker || (*countMarker >> 4) != 0x1 || (*countMarker & 0x0F) > 3)
        return std::nullopt;
    auto width = std::size_t { 1 } << (*countMarker & 0x0F);
    auto value = readUnsigned(bytes, length.contents + 1, width);
    if (!value)
        return std::nullopt;
    return Length { *value, length.contents + 1 + width };
}

std::optional<std::uint64_t> objectOffset(std::string_view bytes, const Trailer& trailer, std::uint64_t object)
{
    auto offset = readUnsigned(bytes, trailer.offsetTable + object * trailer.offsetWidth, trailer.offsetWidth);
    if (!offset || *offset < magic.size() || *offset >= trailer.offsetTable)
        return std::nullopt;
    return offset;
}

// The references of one object: none for a scalar, the children of an array, set or dictionary (for a
// dictionary, its keys and then its values).
struct Children {
    std::uint64_t first = 0; // byte offset of the first reference
    std::uint64_t count = 0;
    bool isDictionary = false;
};

std::optional<Children> readChildren(std::string_view bytes, const Trailer& trailer, std::uint64_t object)
{
    auto offset = objectOffset(bytes, trailer, object);
    if (!offset)
        return std::nullopt;
    auto kind = static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(*offset)]) >> 4;
    if (kind != 0xA && kind != 0xC && kind != 0xD)
        return Children {};
    auto length = readLength(bytes, *offset);
    if (!length || length->count > bytes.size())
        return std::nullopt;
    Children children { length->contents, length->count, kind == 0xD };
    if (children.isDictionary)
        children.count *= 2;
    if (children.first > trailer.offsetTable
        || (trailer.offsetTable - children.first) / trailer.referenceWidth < children.count)
        return std::nullopt;
    return children;
}

// A dictionary key must be a string (ASCII or UTF-16) without a NUL character: keys are handed on as C
// strings, and the full parser stops the process on one that would be cut short.
bool isPlainKey(std::string_view bytes, const Trailer& trailer, std::uint64_t object)
{
    auto offset = objectOffset(bytes, trailer, object);
    if (!offset)
        return false;
    auto kind = static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(*offset)]) >> 4;
    if (kind != 0x5 && kind != 0x6)
        return false;
    auto length = readLength(bytes, *offset);
    std::uint64_t unit = kind == 0x5 ? 1 : 2;
    if (!length || length->contents > trailer.offsetTable || (trailer.offsetTable - length->contents) / unit < length->count)
        return false;
    auto text = bytes.substr(static_cast<std::size_t>(length->contents), static_cast<std::size_t>(length->count * unit));
    for (std::size_t index = 0; index < text.size(); index += unit) {
        if (text[index] == '\0' && (unit == 1 || text[index + 1] == '\0'))
            return false;
    }
    return true;
}

} // namespace

std::optional<ParseFailure> binaryShapeProblem(std::string_view bytes, std::size_t maximumDepth, std::size_t maximumValues)
{
    auto malformed = [](const char* detail) { return ParseFailure { ParseProblem::malformed, detail }; };
    auto tooLarge = [](const char* detail) { return ParseFailure { ParseProblem::tooLarge, detail }; };
    auto trailer = readTrailer(bytes);
    if (!trailer)
        return malformed("property list: binary trailer or offset table unsound");

    enum class State : std::uint8_t { unseen, open, done };
    auto objectCount = static_cast<std::size_t>(trailer->objectCount);
    std::vector<State> states(objectCount, State::unseen);
    std::vector<std::uint64_t> sizes(objectCount, 0); // expanded values below and including each object

    struct Frame {
        std::uint64_t object;
        Children children;
        std::uint64_t next = 0;
        std::uint64_t size = 1;
    };
    std::vector<Frame> stack;

    auto open = [&](std::uint64_t object) -> std::optional<ParseFailure> {
        auto children = readChildren(bytes, *trailer, object);
        if (!children)
            return malformed("property list: binary container unreadable");
        states[static_cast<std::size_t>(object)] = State::open;
        stack.push_back({ object, *children });
        // Only containers nest; a scalar on top of the stack does not add a level.
        if (children->count != 0 && stack.size() > maximumDepth)
            return tooLarge("property list: nested too deeply");
        return std::nullopt;
    };

    if (auto problem = open(trailer->topObject))
        return problem;
    while (!stack.empty()) {
        auto& frame = stack.back();
        if (frame.next == frame.children.count) {
            states[static_cast<std::size_t>(frame.object)] = State::done;
            sizes[static_cast<std::size_t>(frame.object)] = frame.size;
            auto size = frame.size;
            stack.pop_back();
            if (!stack.empty()) {
                stack.back().size += size;
                if (stack.back().size > maximumValues)
                    return tooLarge("property list: too many values");
            }
            continue;
        }
        auto child = readUnsigned(bytes, frame.children.first + frame.next * trailer->referenceWidth, trailer->referenceWidth);
        bool isKey = frame.children.isDictionary && frame.next < frame.children.count / 2;
        ++frame.next;
        if (!child || *child >= trailer->objectCount)
            return malformed("property list: binary reference out of range");
        if (isKey && !isPlainKey(bytes, *trailer, *child))
            return malformed("property list: binary key is not a plain string");
        switch (states[static_cast<std::size_t>(*child)]) {
        case State::open:
            return malformed("property list: binary references form a cycle");
        case State::done:
            frame.size += sizes[static_cast<std::size_t>(*child)];
            if (frame.size > maximumValues)
                return tooLarge("property list: too many values");
            break;
        case State::unseen:
            if (auto problem = open(*child))
                return problem;
            break;
        }
    }
    if (sizes[static_cast<std::size_t>(trailer->topObject)] > maximumValues)
        return tooLarge("property list: too many values");
    return std::nullopt;
}

} // namespace quillmar
