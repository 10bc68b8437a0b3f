#pragma once

#include <deque>

#include "core/windows/Geometry.h"

namespace quillmar {

// The pointer's recent positions during a drag, for its speed. Times are uptime seconds; positions are in
// any one space (the speed does not depend on it).
class PointerSamples final {
public:
    // Samples older than this, measured from the newest, are dropped.
    static constexpr double window = 0.05;

    void add(double time, Point position);
    void clear() { m_samples.clear(); }
    bool isEmpty() const { return m_samples.empty(); }

    // Points per second between the first and the last sample; 0 when the last sample is more than 0.1 s
    // older than `now` (the pointer has stopped) or the samples span less than 0.02 s (too short to tell).
    double speed(double now) const;

private:
    struct Sample {
        double time;
        Point position;
    };
    std::deque<Sample> m_samples;
};

} // namespace quillmar
