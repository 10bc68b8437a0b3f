#pragma once

#include <functional>
#include <thread>

#include <glib.h>

namespace quillmar {

// A thread running a GLib main context of its own, made its thread-default: D-Bus signal subscriptions and
// asynchronous calls made from posted work deliver their callbacks on this thread.
class GMainLoopThread final {
public:
    GMainLoopThread();
    // Runs the work already posted, then stops.
    ~GMainLoopThread();

    GMainLoopThread(const GMainLoopThread&) = delete;
    GMainLoopThread& operator=(const GMainLoopThread&) = delete;

    // Runs `task` on the thread after the work already posted. Any thread. Work posted after `stop` never runs.
    void post(std::function<void()> task);

    // Runs the work already posted, then ends the thread and waits for it. Idempotent; not from the thread itself.
    void stop();

private:
    GMainContext* m_context;
    GMainLoop* m_loop;
    std::thread m_thread;
};

} // namespace quillmar
