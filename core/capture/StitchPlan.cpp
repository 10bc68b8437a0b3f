#include "core/capture/StitchPlan.h"

#include <algorithm>
#include <cassert>

namespace quillmar {

StitchPlan::StitchPlan(std::shared_ptr<const Bitmap> first)
    : m_width(first->width())
    , m_frameHeight(first->height())
    , m_totalHeight(first->height())
{
    m_segments.push_back({ std::move(first), { 0, m_frameHeight } });
}

void StitchPlan::dropBottomRows(int count)
{
    while (count > 0 && !m_segments.empty()) {
        auto& last = m_segments.back();
        int taken = std::min(count, last.rows.count());
        last.rows.end -= taken;
        m_totalHeight -= taken;
        count -= taken;
        if (last.rows.empty())
            m_segments.pop_back();
    }
}

void StitchPlan::append(std::shared_ptr<const Bitmap> frame, int shift, int staticBottom)
{
    assert(!empty() && frame->width() == m_width && frame->height() == m_frameHeight);
    assert(shift > 0 && staticBottom >= 0 && staticBottom < m_frameHeight);
    dropBottomRows(staticBottom);
    RowRange rows { std::max(0, m_frameHeight - staticBottom - shift), m_frameHeight };

    // The newest segment is the only one that may still hold a whole frame: shrink it to its own rows.
    if (!m_segments.empty()) {
        auto& last = m_segments.back();
        if (last.rows.count() != last.frame->height()) {
            last.frame = std::make_shared<const Bitmap>(last.frame->image(last.rows));
            last.rows = { 0, last.frame->height() };
        }
    }
    m_totalHeight += rows.count();
    m_segments.push_back({ std::move(frame), rows });
}

} // namespace quillmar
