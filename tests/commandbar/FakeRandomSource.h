#pragma once

#include <algorithm>
#include <cstdint>

#include "core/commandbar/RandomSource.h"

namespace quillmar {

// Hands out the bytes 1, 2, 3, ... (continuing across calls), or fails when told to.
class FakeRandomSource final : public RandomSource {
public:
    Result<void> fill(std::span<std::uint8_t> bytes) override
    {
        ++m_calls;
        if (m_fails)
            return Error { "random.unavailable", "No random numbers.", "fake" };
        for (auto& byte : bytes)
            byte = ++m_next;
        return {};
    }

    void setFails(bool fails) { m_fails = fails; }
    int calls() const { return m_calls; }

private:
    std::uint8_t m_next = 0;
    bool m_fails = false;
    int m_calls = 0;
};

} // namespace quillmar
