#include "core/capture/ScrollingCapture.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace quillmar {

ScrollingCapture::ScrollingCapture(const MainQueue& mainQueue, ScrollHintProvider* hints, double pixelsPerPoint)
    : m_mainQueue(mainQueue)
    , m_stitcher(hints)
    , m_pixelsPerPoint(pixelsPerPoint > 0 ? pixelsPerPoint : 1.0)
{
}

ScrollStitcher::Status ScrollingCapture::addFrame(Result<Bitmap> frame)
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    if (!m_running)
        return ScrollStitcher::Status::skipped;
    return take(m_stitcher.process(std::move(frame)));
}

ScrollStitcher::Status ScrollingCapture::addFrame(std::shared_ptr<const Bitmap> frame)
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    if (!m_running)
        return ScrollStitcher::Status::skipped;
    return take(m_stitcher.process(std::move(frame)));
}

ScrollStitcher::Status ScrollingCapture::take(ScrollStitcher::Status status)
{
    m_anyFrame = true;
    auto before = m_state;
    switch (status) {
    case ScrollStitcher::Status::started:
        m_state = State::waiting;
        break;
    case ScrollStitcher::Status::skipped:
        break;
    case ScrollStitcher::Status::appended:
        m_state = State::capturing;
        break;
    case ScrollStitcher::Status::lost:
        m_state = State::lost;
        break;
    case ScrollStitcher::Status::full:
        m_state = State::full;
        break;
    }
    if (m_state != before || status == ScrollStitcher::Status::started || status == ScrollStitcher::Status::appended)
        changed();
    return status;
}

ScrollingCapture::State ScrollingCapture::state() const
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    return m_state;
}

std::string ScrollingCapture::title() const
{
    switch (state()) {
    case State::waiting:
        return "Scroll to capture";
    case State::capturing:
        return heightTitle(capturedHeight());
    case State::lost:
        return "Scroll a little slower";
    case State::full:
        return "That's the longest it can be";
    }
    return {};
}

std::string ScrollingCapture::subtitle() const
{
    switch (state()) {
    case State::waiting:
        return "Use the wheel, the scroll bar or the keyboard.";
    case State::capturing:
        return "Keep scrolling, or click Done.";
    case State::lost:
        return "Some of the page went by too fast to stitch.";
    case State::full:
        return "Click Done to keep it.";
    }
    return {};
}

double ScrollingCapture::capturedHeight() const
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    return m_stitcher.plan().totalHeight() / m_pixelsPerPoint;
}

bool ScrollingCapture::isRunning() const
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    return m_running;
}

ScrollingCapture::Outcome ScrollingCapture::stop(Ending ending)
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    Outcome outcome;
    // An interruption keeps what was stitched so far; the message says the capture did not end as asked.
    std::optional<Bitmap> image;
    if (m_anyFrame) {
        if (auto composed = m_stitcher.compose())
            image = std::move(composed).value();
    }
    if (ending == Ending::interrupted)
        outcome.message = "Scrolling capture stopped";
    else if (!m_anyFrame)
        outcome.message = "Nothing was recorded.";
    else if (!image)
        outcome.message = "Nothing was captured";
    outcome.image = std::move(image);
    bool wasRunning = m_running;
    m_running = false;
    if (wasRunning)
        changed();
    return outcome;
}

void ScrollingCapture::setChangeCallback(ChangeCallback callback)
{
    m_mainQueue.assertMainThread("ScrollingCapture");
    m_changeCallback = std::move(callback);
}

void ScrollingCapture::changed()
{
    if (m_changeCallback)
        m_changeCallback();
}

std::string ScrollingCapture::heightTitle(double points)
{
    auto whole = std::llround(std::max(0.0, points));
    auto digits = fmt::format("{}", whole);
    std::string grouped;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            grouped += ',';
        grouped += digits[i];
    }
    return grouped + " pt captured";
}

} // namespace quillmar
