#pragma once

#include <memory>
#include <mutex>
#include <utility>

#include "core/runtime/TaskQueue.h"

namespace quillmar {

// Keeps the work an object posts from running once the object is gone. The owner keeps a guard as its
// last member, so that it ends before anything else goes. Work wrapped by the guard does nothing once it
// has ended. Wrapped work must run on the owner's thread (the main queue for confined objects): that is
// where the guard ends, so the check cannot race with the end.
//
// Work on another thread that needs to reach the owner holds a Token: its `post` checks and posts in one
// step, and `end` waits for a post under way, so nothing is posted after the owner's end (the queue may
// belong to something that does not outlive the owner). A token keeps the guard's small shared state
// alive by itself, so work may outlive the owner safely.
class LifetimeGuard final {
    struct State {
        std::mutex mutex;
        bool alive = true;
    };

public:
    class Token {
    public:
        bool isAlive() const
        {
            std::lock_guard lock(m_state->mutex);
            return m_state->alive;
        }

        // Runs `function` while the guard cannot end, if it has not; false when it has. Any thread.
        template<typename Function>
        bool runWhileAlive(Function&& function) const
        {
            std::lock_guard lock(m_state->mutex);
            if (!m_state->alive)
                return false;
            std::forward<Function>(function)();
            return true;
        }

        // Posts `function`, wrapped, to `queue` unless the guard has ended; false when it has. Any thread.
        template<typename Function>
        bool post(TaskQueue& queue, Function function) const
        {
            return runWhileAlive([&] { queue.post(wrap(m_state, std::move(function))); });
        }

    private:
        friend class LifetimeGuard;
        explicit Token(std::shared_ptr<State> state) : m_state(std::move(state)) { }
        std::shared_ptr<State> m_state;
    };

    LifetimeGuard() : m_state(std::make_shared<State>()) { }
    ~LifetimeGuard() { end(); }

    LifetimeGuard(const LifetimeGuard&) = delete;
    LifetimeGuard& operator=(const LifetimeGuard&) = delete;

    // From now on wrapped work does nothing and tokens post nothing. Waits for a token's post under way.
    void end()
    {
        std::lock_guard lock(m_state->mutex);
        m_state->alive = false;
    }

    Token token() const { return Token(m_state); }

    // `function` as a task that runs only while the guard has not ended.
    template<typename Function>
    Task wrap(Function function) const
    {
        return wrap(m_state, std::move(function));
    }

    void post(TaskQueue& queue, Task task) const { queue.post(wrap(std::move(task))); }
    WorkItemHandle postAfter(TaskQueue& queue, Duration delay, Task task) const
    {
        return queue.postAfter(delay, wrap(std::move(task)));
    }

private:
    template<typename Function>
    static Task wrap(std::shared_ptr<State> state, Function function)
    {
        return [state = std::move(state), function = std::move(function)]() mutable {
            {
                std::lock_guard lock(state->mutex);
                if (!state->alive)
                    return;
            }
            function();
        };
    }

    std::shared_ptr<State> m_state;
};

} // namespace quillmar
