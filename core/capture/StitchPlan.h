#pragma once

#include <memory>
#include <vector>

#include "core/capture/Bitmap.h"
#include "core/capture/RowRange.h"

namespace quillmar {

// The tall image as a list of row ranges of source frames, top to bottom. Only the newest segment keeps
// its whole frame; older ones keep a copy of just their rows, so memory follows the stitched height.
class StitchPlan final {
public:
    struct Segment {
        std::shared_ptr<const Bitmap> frame;
        RowRange rows;
    };

    StitchPlan() = default;
    // A plan that starts with the whole of `first`.
    explicit StitchPlan(std::shared_ptr<const Bitmap> first);

    bool empty() const { return m_segments.empty(); }
    int width() const { return m_width; }
    int frameHeight() const { return m_frameHeight; }
    int totalHeight() const { return m_totalHeight; }
    const std::vector<Segment>& segments() const { return m_segments; }

    // Adds the rows `frame` shows beyond the plan when the page has scrolled `shift` rows (> 0) since the
    // previous frame and its bottom `staticBottom` rows are a fixed footer. The previous frame's footer,
    // the plan's last `staticBottom` rows, is dropped, and the frame's rows from `shift + staticBottom`
    // above its bottom down to its bottom are added: the new content, then the footer, which so appears
    // once, at the very bottom. The height grows by `shift`.
    void append(std::shared_ptr<const Bitmap> frame, int shift, int staticBottom);

private:
    void dropBottomRows(int count);

    std::vector<Segment> m_segments;
    int m_width = 0;
    int m_frameHeight = 0;
    int m_totalHeight = 0;
};

} // namespace quillmar
