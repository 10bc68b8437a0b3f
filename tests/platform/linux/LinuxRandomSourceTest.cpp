#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "platform/linux/LinuxRandomSource.h"
#include "platform/null/NullCommandBarPorts.h"

namespace quillmar {
namespace {

TEST(LinuxRandomSourceTest, FillsEveryByteAndNeverRepeats)
{
    LinuxRandomSource random;
    std::array<std::uint8_t, 32> first {};
    std::array<std::uint8_t, 32> second {};
    ASSERT_TRUE(random.fill(first).ok());
    ASSERT_TRUE(random.fill(second).ok());
    EXPECT_NE(first, second);
    // More than one getrandom call may be needed above 256 bytes.
    std::vector<std::uint8_t> large(4096, 0);
    ASSERT_TRUE(random.fill(large).ok());
    EXPECT_LT(std::count(large.begin(), large.end(), 0), 100) << "about 16 zero bytes expected in 4096";
}

TEST(NullRandomSourceTest, Refuses)
{
    NullRandomSource random;
    std::array<std::uint8_t, 4> bytes {};
    EXPECT_FALSE(random.fill(bytes).ok());
}

} // namespace
} // namespace quillmar
