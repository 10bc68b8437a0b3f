#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "core/hardware/helper/FanHelperResponse.h"

namespace quillmar {

// Delivers the helper's reply to one request exactly once. Copies share the delivery: the first call wins and
// later ones are ignored, and when the last copy goes without a call (the transport dropped the request),
// the handler gets none. Callable from any thread; the handler runs on the thread that delivers.
class FanReplyOnce final {
public:
    using Handler = std::function<void(std::optional<FanHelperResponse>)>;

    explicit FanReplyOnce(Handler handler) : m_state(std::make_shared<State>(std::move(handler))) { }

    // Delivers `response` (none: the helper could not be reached) unless a reply was delivered already.
    void operator()(std::optional<FanHelperResponse> response) const { m_state->deliver(std::move(response)); }

    bool delivered() const { return m_state->delivered.load(); }

private:
    struct State {
        explicit State(Handler handlerToCall) : handler(std::move(handlerToCall)) { }
        ~State() { deliver(std::nullopt); }
        State(const State&) = delete;
        State& operator=(const State&) = delete;

        void deliver(std::optional<FanHelperResponse> response)
        {
            if (delivered.exchange(true))
                return;
            if (handler)
                handler(std::move(response));
        }

        std::atomic<bool> delivered { false };
        Handler handler;
    };

    std::shared_ptr<State> m_state;
};

} // namespace quillmar
