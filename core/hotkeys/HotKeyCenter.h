#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "core/base/FourCharCode.h"
#include "core/hotkeys/HotKeyRegistrar.h"
#include "core/hotkeys/Shortcut.h"
#include "core/hotkeys/ShortcutAction.h"
#include "core/runtime/MainQueue.h"

namespace quillmar {

// Turns (action, shortcut) pairs into the system's global hot keys and pressed hot keys back into actions.
// Confined to the main thread; presses may arrive on any thread and are handed to the main queue.
class HotKeyCenter final {
public:
    // The four-character code 'QLMR' packed big-endian: every hot key of the application carries it.
    static constexpr std::uint32_t signature = fourCharCode("QLMR");

    // Installs the pressed handler on `registrar`; both arguments must outlive the center.
    HotKeyCenter(HotKeyRegistrar& registrar, MainQueue& mainQueue);
    // Unregisters every hot key and removes the pressed handler.
    ~HotKeyCenter();

    HotKeyCenter(const HotKeyCenter&) = delete;
    HotKeyCenter& operator=(const HotKeyCenter&) = delete;

    // Makes exactly these pairs the registered hot keys: everything registered before is released, then
    // the pairs are numbered from 1 in list order. A pair the system refuses is left out without a message
    // and keeps its number, so the numbers of the others do not depend on what the system accepted.
    void registerShortcuts(const std::vector<std::pair<ShortcutAction, Shortcut>>& pairs);

    void unregisterAll();

    // Runs a pressed action on the main thread (the service container's dispatch).
    void setHandler(std::function<void(ShortcutAction)> handler);

    // The action registered under `number`, if any.
    std::optional<ShortcutAction> action(std::uint32_t number) const;
    bool isRegistered(ShortcutAction action) const;
    std::size_t registeredCount() const;

private:
    void dispatch(std::uint32_t number) const;

    HotKeyRegistrar& m_registrar;
    MainQueue& m_mainQueue;
    std::map<std::uint32_t, HotKeyRef> m_refs;
    std::map<std::uint32_t, ShortcutAction> m_actions;
    std::function<void(ShortcutAction)> m_handler;
    // Posted presses hold it weakly: a press still queued when the center goes away finds it expired.
    std::shared_ptr<const HotKeyCenter*> m_self;
};

} // namespace quillmar
