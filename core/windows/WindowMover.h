#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "core/runtime/Runtime.h"
#include "core/windows/Accessibility.h"
#include "core/windows/Geometry.h"

namespace quillmar {

// Moves one window at a time off the main thread, on the serial queue "com.quillmar.windows.mover". It keeps
// a single pending request: a frame submitted while the previous one is still waiting replaces it, so a
// slow application only ever gets the newest frame. Any thread.
class WindowMover final {
public:
    static constexpr const char* queueLabel = "com.quillmar.windows.mover";

    WindowMover(Runtime& runtime, Accessibility& accessibility);
    // Runs what is already queued, then stops.
    ~WindowMover();

    WindowMover(const WindowMover&) = delete;
    WindowMover& operator=(const WindowMover&) = delete;

    // Moves `window` to `frame` (top-left): writes AXPosition, and AXSize too when `resize`.
    void submit(AXElement window, const Rect& frame, bool resize);

    // Runs `task` on the mover's queue once the requests submitted before it are written.
    void whenIdle(Task task);

private:
    struct Request {
        AXElement window;
        Rect frame;
        bool resize = false;
    };

    void drain();

    Accessibility& m_ax;
    std::mutex m_mutex;
    std::optional<Request> m_pending; // guarded by m_mutex
    bool m_scheduled = false;         // guarded by m_mutex
    std::unique_ptr<SerialQueue> m_queue;
};

} // namespace quillmar
