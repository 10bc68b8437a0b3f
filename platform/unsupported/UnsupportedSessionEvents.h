#pragma once

#include "core/clipboard/SessionEvents.h"

namespace quillmar {

// Sleep and lock are never reported.
class UnsupportedSessionEvents final : public SessionEvents {
public:
    void startObserving(std::function<void(SessionEvent)> handler) override;
    void stopObserving() override;
};

} // namespace quillmar
