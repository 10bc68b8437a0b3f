#pragma once

#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "core/hotkeys/HotKeyRegistrar.h"

namespace quillmar {

// Records what the center asks of the system; refuses combinations marked as taken by "another application".
class FakeHotKeyRegistrar final : public HotKeyRegistrar {
public:
    struct Registration {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        HotKeyID id;
        HotKeyRef ref;
    };

    std::optional<HotKeyRef> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id) override
    {
        if (taken.contains({ keyCode, modifiers }))
            return std::nullopt;
        HotKeyRef ref = m_nextRef++;
        active.push_back({ keyCode, modifiers, id, ref });
        return ref;
    }

    void unregisterHotKey(HotKeyRef ref) override
    {
        std::erase_if(active, [ref](const Registration& registration) { return registration.ref == ref; });
        ++unregisterCount;
    }

    void setPressedHandler(std::function<void(HotKeyID)> handler) override
    {
        std::lock_guard lock(m_mutex);
        m_handler = std::move(handler);
        ++handlerInstalls;
    }

    // What the system does when the user presses a hot key; callable from any thread.
    void press(HotKeyID id)
    {
        std::lock_guard lock(m_mutex);
        if (m_handler)
            m_handler(id);
    }

    bool hasHandler()
    {
        std::lock_guard lock(m_mutex);
        return static_cast<bool>(m_handler);
    }

    std::set<std::pair<std::uint32_t, std::uint32_t>> taken;
    std::vector<Registration> active;
    int unregisterCount = 0;
    int handlerInstalls = 0;

private:
    std::mutex m_mutex;
    std::function<void(HotKeyID)> m_handler;
    HotKeyRef m_nextRef = 1000;
};

} // namespace quillmar
