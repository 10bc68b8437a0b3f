#include <gtest/gtest.h>

#include "core/capture/ProfileHintProvider.h"
#include "core/capture/RowSignature.h"
#include "core/capture/ScrollMatcher.h"
#include "core/capture/ScrollStitcher.h"
#include "tests/capture/GeneratedPage.h"

namespace quillmar {
namespace {

using testing_support::GeneratedPage;
using Status = ScrollStitcher::Status;
using Statuses = std::vector<Status>;

// Every stitching test runs twice: on row matching alone, and with the portable hint tried first.
enum class Hints { none, profile };

void PrintTo(Hints hints, std::ostream* out)
{
    *out << (hints == Hints::none ? "without hints" : "with profile hints");
}

class ScrollStitcherTest : public testing::TestWithParam<Hints> {
protected:
    ScrollStitcherTest()
        : m_stitcher(GetParam() == Hints::profile ? &m_hints : nullptr)
    {
    }

    // Feeds frames of `page` whose tops are `tops`; returns the statuses.
    Statuses feed(const GeneratedPage& page, const std::vector<int>& tops, int frameHeight, GeneratedPage::View view = {})
    {
        Statuses statuses;
        for (int top : tops)
            statuses.push_back(m_stitcher.process(page.frame(top, frameHeight, view)));
        return statuses;
    }

    Bitmap composed()
    {
        auto image = m_stitcher.compose();
        EXPECT_TRUE(image.ok());
        return image.ok() ? std::move(image).value() : Bitmap::filled(1, 1, 0).value();
    }

    ProfileHintProvider m_hints;
    ScrollStitcher m_stitcher;
};

// The same pixels apart from the side bands, where the scroll-bar thumb moves.
bool sameContent(const Bitmap& a, const Bitmap& b)
{
    if (a.width() != b.width() || a.height() != b.height())
        return false;
    auto band = static_cast<std::size_t>(signatureSideBand(a.width())) * 4;
    auto length = a.rowBytes() - 2 * band;
    for (int y = 0; y < a.height(); ++y) {
        if (std::memcmp(a.row(y) + band, b.row(y) + band, length) != 0)
            return false;
    }
    return true;
}

TEST_P(ScrollStitcherTest, IdenticalFramesAppendNothing)
{
    GeneratedPage page(320, 1000);
    EXPECT_EQ(feed(page, { 100, 100, 100 }, 300), (Statuses { Status::started, Status::skipped, Status::skipped }));
    EXPECT_EQ(m_stitcher.plan().totalHeight(), 300);
    EXPECT_TRUE(composed().samePixels(page.frame(100, 300)));
}

TEST_P(ScrollStitcherTest, TextAndUniformBandsStitchSeamlessly)
{
    GeneratedPage page(320, 3000, 7);
    std::vector<int> tops { 0, 1, 18, 108, 109, 350, 380, 380, 449, 700, 950, 1170, 1200, 1469, 1700 };
    auto statuses = feed(page, tops, 300);
    EXPECT_EQ(statuses.front(), Status::started);
    for (std::size_t i = 1; i < tops.size(); ++i)
        EXPECT_EQ(statuses[i], tops[i] == tops[i - 1] ? Status::skipped : Status::appended) << "frame at " << tops[i];
    EXPECT_EQ(m_stitcher.plan().totalHeight(), 2000);
    EXPECT_TRUE(composed().samePixels(page.rows(0, 2000)));
}

TEST_P(ScrollStitcherTest, StickyHeaderAndFooterAreDrawnOnce)
{
    GeneratedPage page(320, 3000, 3);
    GeneratedPage::View bars { 30, 40, false };
    // The bars cover 70 of 300 rows and never line up at a scroll, so they slow the fastest scroll down.
    std::vector<int> tops { 0, 25, 100, 101, 190, 290, 360, 455, 555, 600 };
    auto statuses = feed(page, tops, 300, bars);
    EXPECT_EQ(statuses.front(), Status::started);
    for (std::size_t i = 1; i < tops.size(); ++i)
        EXPECT_EQ(statuses[i], Status::appended) << "frame at " << tops[i];
    auto expected = page.expected(0, 600, 300, bars);
    auto image = composed();
    EXPECT_EQ(image.height(), expected.height());
    EXPECT_TRUE(image.samePixels(expected)) << "header at the top, footer only at the bottom";
}

TEST_P(ScrollStitcherTest, FooterOfFortyRowsCountsAsStaticWithinAThird)
{
    GeneratedPage page(320, 3000, 3);
    GeneratedPage::View bars { 0, 40, false };
    for (int top : { 0, 211, 517, 1000 }) {
        auto before = rowSignatures(page.frame(top, 300, bars));
        auto after = rowSignatures(page.frame(top + 57, 300, bars));
        int rows = ScrollMatcher::staticBottomRows(before, after);
        EXPECT_GE(rows, 40) << "at " << top;
        EXPECT_LE(rows, 100) << "at " << top;
    }
}

TEST_P(ScrollStitcherTest, ScrollFartherThanTheOverlapIsLostUntilTheFramesMeetAgain)
{
    GeneratedPage page(320, 3000, 5);
    GeneratedPage::View bars { 30, 40, false };
    auto statuses = feed(page, { 0, 80, 500, 900 }, 300, bars);
    EXPECT_EQ(statuses, (Statuses { Status::started, Status::appended, Status::lost, Status::lost }));
    EXPECT_EQ(m_stitcher.plan().totalHeight(), 380) << "a lost frame changes nothing";

    // Scrolling back to within reach of the last placed frame goes on seamlessly.
    EXPECT_EQ(feed(page, { 160, 240 }, 300, bars), (Statuses { Status::appended, Status::appended }));
    EXPECT_TRUE(composed().samePixels(page.expected(0, 240, 300, bars)));
}

TEST_P(ScrollStitcherTest, MovingScrollBarThumbDoesNotStopTheMatch)
{
    GeneratedPage page(320, 3000, 11);
    GeneratedPage::View thumb { 0, 0, true };
    std::vector<int> tops { 0, 40, 90, 91, 200, 333, 600 };
    auto statuses = feed(page, tops, 300, thumb);
    for (std::size_t i = 1; i < tops.size(); ++i)
        EXPECT_EQ(statuses[i], Status::appended) << "frame at " << tops[i];
    auto image = composed();
    EXPECT_EQ(image.height(), 900);
    EXPECT_TRUE(sameContent(image, page.rows(0, 900)));
}

TEST_P(ScrollStitcherTest, FrameOfAnotherSizeStartsANewPlan)
{
    GeneratedPage page(320, 3000);
    EXPECT_EQ(feed(page, { 0, 50 }, 300), (Statuses { Status::started, Status::appended }));
    EXPECT_EQ(feed(page, { 60 }, 200), (Statuses { Status::started }));
    EXPECT_EQ(m_stitcher.plan().totalHeight(), 200);
    EXPECT_EQ(feed(page, { 90 }, 200), (Statuses { Status::appended }));
    EXPECT_TRUE(composed().samePixels(page.rows(60, 230)));
}

TEST_P(ScrollStitcherTest, UnreadableFramesAreSkipped)
{
    GeneratedPage page(320, 1000);
    EXPECT_EQ(m_stitcher.process(Error { "png.malformed", "The PNG image could not be read.", {} }), Status::skipped);
    EXPECT_TRUE(m_stitcher.plan().empty());
    EXPECT_EQ(m_stitcher.compose().error().message, "Nothing was captured");

    EXPECT_EQ(feed(page, { 0 }, 300), (Statuses { Status::started }));
    EXPECT_EQ(m_stitcher.process(Error { "png.malformed", "The PNG image could not be read.", {} }), Status::skipped);
    EXPECT_EQ(feed(page, { 100 }, 300), (Statuses { Status::appended }));
    EXPECT_TRUE(composed().samePixels(page.rows(0, 400)));
}

TEST_P(ScrollStitcherTest, BlankFramesCannotBeJudgedAndLoseNothing)
{
    EXPECT_EQ(m_stitcher.process(Bitmap::filled(320, 300, 0xffffffffu)), Status::started);
    EXPECT_EQ(m_stitcher.process(Bitmap::filled(320, 300, 0xffffffffu)), Status::skipped);
}

TEST_P(ScrollStitcherTest, StopsAtFortyThousandRowsWithFull)
{
    // Narrow frames keep this quick: 200 rows each, scrolled 120 rows at a time.
    GeneratedPage page(48, 41000, 13);
    int top = 0;
    Status status = m_stitcher.process(page.frame(top, 200));
    ASSERT_EQ(status, Status::started);
    while (status != Status::full && top + 120 + 200 <= page.height()) {
        top += 120;
        status = m_stitcher.process(page.frame(top, 200));
        ASSERT_NE(status, Status::lost) << "at " << top;
    }
    ASSERT_EQ(status, Status::full);
    int height = m_stitcher.plan().totalHeight();
    EXPECT_GE(height, ScrollStitcher::heightLimit);
    EXPECT_LT(height, ScrollStitcher::heightLimit + 120) << "the limit is checked before each frame";
    EXPECT_EQ(m_stitcher.process(page.frame(top + 10, 200)), Status::full);
    EXPECT_EQ(m_stitcher.plan().totalHeight(), height);
    EXPECT_TRUE(composed().samePixels(page.rows(0, height)));
}

INSTANTIATE_TEST_SUITE_P(Hints, ScrollStitcherTest, testing::Values(Hints::none, Hints::profile),
    [](const testing::TestParamInfo<Hints>& row) { return row.param == Hints::none ? "withoutHints" : "withProfileHints"; });

} // namespace
} // namespace quillmar
