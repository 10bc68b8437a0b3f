#include "core/capture/ScrollStitcher.h"

#include <cstring>

#include "core/capture/ScrollMatcher.h"

namespace quillmar {

ScrollStitcher::ScrollStitcher(ScrollHintProvider* hints)
    : m_hints(hints)
{
}

ScrollStitcher::Status ScrollStitcher::process(Result<Bitmap> frame)
{
    if (!frame)
        return Status::skipped;
    return process(std::make_shared<const Bitmap>(std::move(frame).value()));
}

ScrollStitcher::Status ScrollStitcher::start(std::shared_ptr<const Bitmap> frame)
{
    m_referenceRows = rowSignatures(*frame);
    m_referenceHint = m_hints ? m_hints->prepare(*frame) : nullptr;
    m_plan = StitchPlan(std::move(frame));
    return Status::started;
}

ScrollStitcher::Status ScrollStitcher::process(std::shared_ptr<const Bitmap> frame)
{
    if (!frame)
        return Status::skipped;
    if (m_plan.empty() || frame->width() != m_plan.width() || frame->height() != m_plan.frameHeight())
        return start(std::move(frame));
    if (m_plan.totalHeight() >= heightLimit)
        return Status::full;

    auto rows = rowSignatures(*frame);
    std::unique_ptr<ScrollHintProvider::Frame> hintFrame = m_hints ? m_hints->prepare(*frame) : nullptr;
    std::optional<int> hint;
    if (m_referenceHint && hintFrame)
        hint = m_hints->shift(*m_referenceHint, *hintFrame);

    auto match = ScrollMatcher::match(m_referenceRows, rows, hint);
    switch (match.outcome) {
    case ScrollMatch::Outcome::unusable:
        return Status::skipped;
    case ScrollMatch::Outcome::lost:
        return Status::lost;
    case ScrollMatch::Outcome::accepted:
        break;
    }
    if (match.shift == 0)
        return Status::skipped;

    int staticBottom = ScrollMatcher::staticBottomRows(m_referenceRows, rows);
    m_plan.append(std::move(frame), match.shift, staticBottom);
    m_referenceRows = std::move(rows);
    m_referenceHint = std::move(hintFrame);
    return Status::appended;
}

Result<Bitmap> ScrollStitcher::compose() const
{
    if (m_plan.empty())
        return Error { "stitch.empty", "Nothing was captured", {} };
    QUILLMAR_TRY_ASSIGN(auto image, Bitmap::filled(m_plan.width(), m_plan.totalHeight(), 0));
    int y = 0;
    for (const auto& segment : m_plan.segments()) {
        for (int source = segment.rows.begin; source < segment.rows.end; ++source)
            std::memcpy(image.row(y++), segment.frame->row(source), image.rowBytes());
    }
    return image;
}

} // namespace quillmar
