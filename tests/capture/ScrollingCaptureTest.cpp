#include <gtest/gtest.h>

#include "core/capture/ScrollingCapture.h"
#include "core/runtime/VirtualRuntime.h"
#include "tests/capture/GeneratedPage.h"

namespace quillmar {
namespace {

using testing_support::GeneratedPage;
using State = ScrollingCapture::State;
using Status = ScrollStitcher::Status;

class ScrollingCaptureTest : public testing::Test {
protected:
    ScrollingCaptureTest()
    {
        m_capture.setChangeCallback([this] { ++m_changes; });
    }

    Status scrollTo(int top, int height = 300) { return m_capture.addFrame(m_page.frame(top, height)); }

    std::pair<std::string, std::string> texts() const { return { m_capture.title(), m_capture.subtitle() }; }

    VirtualRuntime m_runtime;
    GeneratedPage m_page { 320, 3000, 31 };
    ScrollingCapture m_capture { m_runtime.mainQueue(), nullptr, /*pixelsPerPoint=*/2.0 };
    int m_changes = 0;
};

TEST_F(ScrollingCaptureTest, ShowsEachStateWithItsTexts)
{
    EXPECT_EQ(m_capture.state(), State::waiting);
    EXPECT_EQ(texts(), std::make_pair(std::string("Scroll to capture"), std::string("Use the wheel, the scroll bar or the keyboard.")));

    EXPECT_EQ(scrollTo(0), Status::started);
    EXPECT_EQ(m_capture.state(), State::waiting) << "one frame is not a scroll yet";
    EXPECT_EQ(m_capture.capturedHeight(), 150.0);

    EXPECT_EQ(scrollTo(61), Status::appended);
    EXPECT_EQ(m_capture.state(), State::capturing);
    EXPECT_EQ(texts(), std::make_pair(std::string("181 pt captured"), std::string("Keep scrolling, or click Done.")));

    EXPECT_EQ(scrollTo(61), Status::skipped);
    EXPECT_EQ(m_capture.state(), State::capturing);

    EXPECT_EQ(scrollTo(900), Status::lost);
    EXPECT_EQ(m_capture.state(), State::lost);
    EXPECT_EQ(texts(), std::make_pair(std::string("Scroll a little slower"), std::string("Some of the page went by too fast to stitch.")));
    EXPECT_EQ(m_capture.addFrame(Error { "png.malformed", "", "" }), Status::skipped);
    EXPECT_EQ(m_capture.state(), State::lost) << "a skipped frame changes nothing";

    EXPECT_EQ(scrollTo(200), Status::appended);
    EXPECT_EQ(m_capture.state(), State::capturing);
    EXPECT_EQ(m_capture.title(), "250 pt captured");
}

TEST_F(ScrollingCaptureTest, FullAtTheHeightLimit)
{
    GeneratedPage page(48, 41000, 37);
    ScrollingCapture capture(m_runtime.mainQueue(), nullptr, 1.0);
    Status status = capture.addFrame(page.frame(0, 200));
    for (int top = 120; status != Status::full && top + 200 <= page.height(); top += 120)
        status = capture.addFrame(page.frame(top, 200));
    EXPECT_EQ(status, Status::full);
    EXPECT_EQ(capture.state(), State::full);
    EXPECT_EQ(capture.title(), "That's the longest it can be");
    EXPECT_EQ(capture.subtitle(), "Click Done to keep it.");
    EXPECT_TRUE(capture.stop(ScrollingCapture::Ending::done).image.has_value());
}

TEST_F(ScrollingCaptureTest, ChangesAreReportedOncePerChange)
{
    scrollTo(0);
    EXPECT_EQ(m_changes, 1);
    scrollTo(0);
    EXPECT_EQ(m_changes, 1) << "a still frame changes nothing";
    scrollTo(30);
    scrollTo(60);
    EXPECT_EQ(m_changes, 3) << "each appended frame changes the height";
    scrollTo(900);
    scrollTo(900);
    EXPECT_EQ(m_changes, 4) << "lost twice is one change";
    (void)m_capture.stop(ScrollingCapture::Ending::done);
    EXPECT_EQ(m_changes, 5);
    (void)m_capture.stop(ScrollingCapture::Ending::done);
    EXPECT_EQ(m_changes, 5);
}

TEST_F(ScrollingCaptureTest, DoneGivesTheStitchedImage)
{
    scrollTo(0);
    scrollTo(100);
    auto outcome = m_capture.stop(ScrollingCapture::Ending::done);
    ASSERT_TRUE(outcome.image.has_value());
    EXPECT_TRUE(outcome.image->samePixels(m_page.rows(0, 400)));
    EXPECT_EQ(outcome.message, "");
    EXPECT_FALSE(m_capture.isRunning());
    EXPECT_EQ(scrollTo(200), Status::skipped) << "frames after stopping are ignored";
    EXPECT_EQ(m_capture.capturedHeight(), 200.0);
}

TEST_F(ScrollingCaptureTest, StopMessages)
{
    struct Row {
        const char* name;
        std::vector<bool> framesReadable;
        ScrollingCapture::Ending ending;
        const char* message;
        bool keepsImage;
    };
    const Row rows[] = {
        { "interruptedWithFrames", { true, true }, ScrollingCapture::Ending::interrupted, "Scrolling capture stopped", true },
        { "interruptedWithout", {}, ScrollingCapture::Ending::interrupted, "Scrolling capture stopped", false },
        { "interruptedWithOnlyUnreadableFrames", { false }, ScrollingCapture::Ending::interrupted,
            "Scrolling capture stopped", false },
        { "doneBeforeAnyFrame", {}, ScrollingCapture::Ending::done, "Nothing was recorded.", false },
        { "doneWithOnlyUnreadableFrames", { false, false }, ScrollingCapture::Ending::done, "Nothing was captured", false },
    };
    for (const auto& row : rows) {
        ScrollingCapture capture(m_runtime.mainQueue(), nullptr, 2.0);
        int top = 0;
        for (bool readable : row.framesReadable) {
            if (readable)
                (void)capture.addFrame(m_page.frame(top += 40, 300));
            else
                (void)capture.addFrame(Error { "png.malformed", "", "" });
        }
        auto outcome = capture.stop(row.ending);
        EXPECT_EQ(outcome.message, row.message) << row.name;
        EXPECT_EQ(outcome.image.has_value(), row.keepsImage) << row.name;
    }
}

TEST(ScrollingCapture, HeightTitleRoundsAndGroupsThousands)
{
    struct Row {
        double points;
        const char* title;
    };
    const Row rows[] = { { 0, "0 pt captured" }, { 12.4, "12 pt captured" }, { 999.5, "1,000 pt captured" },
        { 20000, "20,000 pt captured" }, { 1234567, "1,234,567 pt captured" }, { -3, "0 pt captured" } };
    for (const auto& row : rows)
        EXPECT_EQ(ScrollingCapture::heightTitle(row.points), row.title) << row.points;
}

} // namespace
} // namespace quillmar
