#include "core/hotkeys/HotKeyCenter.h"

#include <string_view>

namespace quillmar {

namespace {

constexpr std::string_view who = "HotKeyCenter";

} // namespace

HotKeyCenter::HotKeyCenter(HotKeyRegistrar& registrar, MainQueue& mainQueue)
    : m_registrar(registrar)
    , m_mainQueue(mainQueue)
    , m_self(std::make_shared<const HotKeyCenter*>(this))
{
    m_mainQueue.assertMainThread(who);
    std::weak_ptr<const HotKeyCenter*> weakSelf = m_self;
    MainQueue* queue = &m_mainQueue;
    // Runs on whatever thread the system reports on: it touches nothing but the main queue.
    m_registrar.setPressedHandler([weakSelf, queue](HotKeyID id) {
        if (id.signature != signature)
            return;
        queue->post([weakSelf, number = id.number] {
            if (auto self = weakSelf.lock())
                (*self)->dispatch(number);
        });
    });
}

HotKeyCenter::~HotKeyCenter()
{
    m_mainQueue.assertMainThread(who);
    unregisterAll();
    m_registrar.setPressedHandler({});
}

void HotKeyCenter::registerShortcuts(const std::vector<std::pair<ShortcutAction, Shortcut>>& pairs)
{
    m_mainQueue.assertMainThread(who);
    unregisterAll();
    std::uint32_t number = 0;
    for (const auto& [pairAction, shortcut] : pairs) {
        ++number;
        auto ref = m_registrar.registerHotKey(shortcut.keyCode, shortcut.modifiers, HotKeyID { signature, number });
        if (!ref)
            continue;
        m_refs.emplace(number, *ref);
        m_actions.emplace(number, pairAction);
    }
}

void HotKeyCenter::unregisterAll()
{
    m_mainQueue.assertMainThread(who);
    for (const auto& [number, ref] : m_refs)
        m_registrar.unregisterHotKey(ref);
    m_refs.clear();
    m_actions.clear();
}

void HotKeyCenter::setHandler(std::function<void(ShortcutAction)> handler)
{
    m_mainQueue.assertMainThread(who);
    m_handler = std::move(handler);
}

std::optional<ShortcutAction> HotKeyCenter::action(std::uint32_t number) const
{
    m_mainQueue.assertMainThread(who);
    if (auto found = m_actions.find(number); found != m_actions.end())
        return found->second;
    return std::nullopt;
}

bool HotKeyCenter::isRegistered(ShortcutAction wanted) const
{
    m_mainQueue.assertMainThread(who);
    for (const auto& [number, registered] : m_actions) {
        if (registered == wanted)
            return true;
    }
    return false;
}

std::size_t HotKeyCenter::registeredCount() const
{
    m_mainQueue.assertMainThread(who);
    return m_actions.size();
}

void HotKeyCenter::dispatch(std::uint32_t number) const
{
    // A press that raced a re-registration may name a number that is gone or now means another action;
    // the lookup happens here, on the main thread, against what is registered now.
    auto found = m_actions.find(number);
    if (found == m_actions.end())
        return;
    if (auto handler = m_handler)
        handler(found->second);
}

} // namespace quillmar
