#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/capture/ScrollStitcher.h"
#include "core/runtime/MainQueue.h"

namespace quillmar {

// A scrolling-capture session as the application shows it: the stitcher fed frame by frame, the state
// with its title and subtitle, and what is left when it stops. Confined to the main thread.
class ScrollingCapture final {
public:
    enum class State : int {
        waiting = 0, // no scroll yet
        capturing = 1, // rows are being added
        lost = 2, // the last frame went by too fast to place
        full = 3, // the height limit was reached
    };

    // How the session ended: the user clicked Done, or the capture was ended by something else (the
    // user cancelled, the captured window went away).
    enum class Ending { done, interrupted };

    // What is left after stopping: the tall image when anything was stitched, and a message for the user
    // (empty after Done with an image).
    struct Outcome {
        std::optional<Bitmap> image;
        std::string message;
    };

    using ChangeCallback = std::function<void()>;

    // `pixelsPerPoint` is the captured display's scale (2 on a double-density screen); `hints` may be
    // null and must outlive the session.
    ScrollingCapture(const MainQueue& mainQueue, ScrollHintProvider* hints, double pixelsPerPoint);

    // Feeds one captured frame (an Error when it could not be made into a bitmap). Frames after stop
    // are ignored and give `skipped`.
    ScrollStitcher::Status addFrame(Result<Bitmap> frame);
    ScrollStitcher::Status addFrame(std::shared_ptr<const Bitmap> frame);

    State state() const;
    std::string title() const;
    std::string subtitle() const;
    // The stitched height in points; 0 before the first frame.
    double capturedHeight() const;
    bool isRunning() const;

    // Ends the session. A started plan gives the composed image, whichever the ending. The message is
    // "Scrolling capture stopped" when interrupted (with or without an image); after Done it is empty with
    // an image, "Nothing was recorded." when no frame arrived at all, and "Nothing was captured" when frames
    // arrived but none could be used.
    Outcome stop(Ending ending);

    // Called after every change of state, height or running.
    void setChangeCallback(ChangeCallback callback);

    // "1,234 pt captured": the height rounded to whole points, thousands grouped with commas.
    static std::string heightTitle(double points);

private:
    void changed();
    ScrollStitcher::Status take(ScrollStitcher::Status status);

    const MainQueue& m_mainQueue;
    ScrollStitcher m_stitcher;
    double m_pixelsPerPoint;
    State m_state = State::waiting;
    bool m_running = true;
    bool m_anyFrame = false;
    ChangeCallback m_changeCallback;
};

} // namespace quillmar
