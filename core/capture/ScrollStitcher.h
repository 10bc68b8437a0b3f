#pragma once

#include <memory>
#include <vector>

#include "core/base/Result.h"
#include "core/capture/Bitmap.h"
#include "core/capture/RowSignature.h"
#include "core/capture/ScrollHintProvider.h"
#include "core/capture/StitchPlan.h"

namespace quillmar {

// Takes the frames of a scrolling capture one by one and stitches them into a StitchPlan.
class ScrollStitcher final {
public:
    enum class Status : int {
        started = 0, // the first frame was taken and the plan started
        skipped = 1, // not appended, nothing lost: unreadable, no usable match, or the page did not move
        appended = 2, // new rows were appended
        lost = 3, // the frame could not be placed against the previous one
        full = 4, // the height limit was reached
    };

    // Once the plan is this tall, frames are refused with `full`.
    static constexpr int heightLimit = 40000;

    // `hints` may be null (no hints); it must outlive the stitcher.
    explicit ScrollStitcher(ScrollHintProvider* hints = nullptr);

    // A frame that could not be made into a bitmap (an Error) is `skipped`. The first frame, or one whose
    // size differs from the plan's frames, starts a new plan. Otherwise the frame is matched against the
    // reference (the last appended frame) and, when it scrolled, its new rows are appended and it becomes
    // the reference. A frame that matches with no shift (the page did not move) is `skipped`.
    Status process(Result<Bitmap> frame);
    Status process(std::shared_ptr<const Bitmap> frame);

    const StitchPlan& plan() const { return m_plan; }

    // The tall image: every segment's rows, top to bottom, at full resolution. An Error before a first
    // frame, or when the image would be too large for a bitmap.
    Result<Bitmap> compose() const;

private:
    Status start(std::shared_ptr<const Bitmap> frame);

    ScrollHintProvider* m_hints;
    StitchPlan m_plan;
    std::vector<RowSignature> m_referenceRows;
    std::unique_ptr<ScrollHintProvider::Frame> m_referenceHint;
};

} // namespace quillmar
