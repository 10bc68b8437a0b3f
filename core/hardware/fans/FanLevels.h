#pragma once

namespace quillmar {

// Fan levels are whole percents in steps of 5.
struct FanLevels {
    static constexpr int step = 5;

    // `value` rounded up to the next step, capped at 100; a negative value gives 0. A value a hair above
    // a step (from floating-point noise) stays on that step.
    static int roundUpToStep(double value);
};

} // namespace quillmar
