#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// A colour found in copied text. Components are 0…1 (sRGB).
struct ClipColor {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    bool operator==(const ClipColor&) const = default;

    // "#RRGGBB", or "#RRGGBBAA" when not opaque.
    std::string hex() const;

    // The colour when the whole text (surrounding whitespace aside) is one, in one of these CSS forms:
    // "#RGB", "#RGBA", "#RRGGBB", "#RRGGBBAA"; "rgb(…)" / "rgba(…)" with 0–255 or percentage channels;
    // "hsl(…)" / "hsla(…)" with the hue in degrees and percentages; commas or spaces between the
    // numbers and an optional "/ alpha" (0–1 or a percentage). Function names ignore case. None for
    // anything else, including out-of-range numbers.
    static std::optional<ClipColor> parse(std::string_view text);
};

} // namespace quillmar
