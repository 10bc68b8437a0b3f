#pragma once

#include <memory>
#include <optional>

#include "core/capture/Bitmap.h"

namespace quillmar {

// An estimate of how far the page scrolled between two frames, found by image registration rather than
// by row hashes. It is only a hint: the scroll matcher tries it first and checks it like any candidate.
// A system backend can use the platform's registration service; ProfileHintProvider is the portable one.
class ScrollHintProvider {
public:
    // A frame made ready for registration once (scaled down, say), kept while it is the reference.
    class Frame {
    public:
        virtual ~Frame() = default;
    };

    virtual ~ScrollHintProvider() = default;

    // Null when this provider cannot use the frame.
    virtual std::unique_ptr<Frame> prepare(const Bitmap& frame) = 0;

    // The vertical shift of `current` against `reference` in full-resolution rows, positive when the page
    // moved up (row i of `current` shows row i + shift of `reference`); none when it cannot tell.
    virtual std::optional<int> shift(const Frame& reference, const Frame& current) = 0;
};

} // namespace quillmar
