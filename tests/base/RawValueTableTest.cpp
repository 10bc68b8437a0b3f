#include <gtest/gtest.h>

#include "core/base/RawValueTable.h"

namespace quillmar {
namespace {

enum class Shade { light, dark, unlisted };

constexpr auto shades = rawValueTable<Shade>({
    { Shade::light, "light" },
    { Shade::dark, "dark" },
});

static_assert(shades.fromRawValue("dark") == Shade::dark);

TEST(RawValueTable, ReadsOnlyExactSpellings)
{
    EXPECT_EQ(shades.fromRawValue("light"), Shade::light);
    EXPECT_EQ(shades.fromRawValue("Light"), std::nullopt);
    EXPECT_EQ(shades.fromRawValue("light "), std::nullopt);
    EXPECT_EQ(shades.fromRawValue(""), std::nullopt);
}

TEST(RawValueTable, ValueWithoutRowReadsAsTheFirstRow)
{
    EXPECT_EQ(shades.rawValue(Shade::dark), "dark");
    EXPECT_EQ(shades.rawValue(Shade::unlisted), "light");
}

} // namespace
} // namespace quillmar
