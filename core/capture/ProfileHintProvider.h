#pragma once

#include "core/capture/ScrollHintProvider.h"

namespace quillmar {

// The portable registration hint. Each frame is scaled to at most `maximumWidth` pixels wide (both sides
// by the same factor) and reduced to a profile: for every scaled row, the mean brightness of a few
// vertical bands (the side bands left out, as for row signatures), sampled at a few columns each. The shift is the one whose overlapping
// profile rows differ least (each row's difference capped, so a sticky header or footer weighs little),
// refined to a fraction of a scaled row and converted to full-resolution rows with
// round(shift × fullHeight / scaledHeight).
class ProfileHintProvider final : public ScrollHintProvider {
public:
    static constexpr int maximumWidth = 640;
    static constexpr int bandCount = 8;
    static constexpr int samplesPerBand = 16;

    std::unique_ptr<Frame> prepare(const Bitmap& frame) override;
    std::optional<int> shift(const Frame& reference, const Frame& current) override;

    // The scaled size of a frame `width` × `height`.
    static int scaledWidth(int width);
    static int scaledHeight(int width, int height);
};

} // namespace quillmar
