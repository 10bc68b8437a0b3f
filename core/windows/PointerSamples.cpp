#include "core/windows/PointerSamples.h"

#include <cmath>

namespace quillmar {

void PointerSamples::add(double time, Point position)
{
    m_samples.push_back({ time, position });
    while (!m_samples.empty() && time - m_samples.front().time > window)
        m_samples.pop_front();
}

double PointerSamples::speed(double now) const
{
    if (m_samples.empty())
        return 0;
    const auto& first = m_samples.front();
    const auto& last = m_samples.back();
    double span = last.time - first.time;
    if (now - last.time > 0.1 || span < 0.02)
        return 0;
    return std::hypot(last.position.x - first.position.x, last.position.y - first.position.y) / span;
}

} // namespace quillmar
