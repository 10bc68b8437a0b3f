#include "core/eventtap/EventTap.h"

#include <algorithm>
#include <cassert>

namespace quillmar {

namespace {

TapKind tapKind(ListenOnly listenOnly)
{
    return listenOnly == ListenOnly::yes ? TapKind::listenOnly : TapKind::filter;
}

} // namespace

EventTap::EventTap(Runtime& runtime, EventTapSource& source)
    : m_runtime(runtime)
    , m_source(source)
    , m_trusted(source.isAccessibilityTrusted())
    , m_chains { std::make_shared<const ChainTable>(), std::make_shared<const ChainTable>() }
{
    assertMainThread();
    m_worker = std::make_unique<EventTapWorker>(
        runtime, source,
        [this, token = m_guard.token()](const InputEvent& event) -> std::optional<InputEvent> {
            if (!token.isAlive())
                return event;
            return runFilters(event);
        },
        [this, token = m_guard.token()](const InputEvent& event) {
            if (token.isAlive())
                runListeners(event);
        });
}

EventTap::~EventTap()
{
    assertMainThread();
    m_guard.end();
    m_worker.reset();
}

void EventTap::assertMainThread() const
{
    m_runtime.mainQueue().assertMainThread("EventTap");
}

void EventTap::registerHandler(std::string name, std::vector<std::uint32_t> eventTypes, ListenOnly listenOnly,
    Handler handler)
{
    assertMainThread();
    assert(handler);
    std::uint64_t types = 0;
    for (auto type : eventTypes)
        types |= eventMaskBit(type);
    Registration registration { std::move(name), types, listenOnly,
        std::make_shared<const Handler>(std::move(handler)) };

    auto existing = std::find_if(m_registrations.begin(), m_registrations.end(),
        [&](const Registration& entry) { return entry.name == registration.name; });
    if (existing != m_registrations.end())
        *existing = std::move(registration);
    else
        m_registrations.push_back(std::move(registration));
    registrationsChanged();
}

void EventTap::unregister(std::string_view name)
{
    assertMainThread();
    auto erased = std::erase_if(m_registrations, [&](const Registration& entry) { return entry.name == name; });
    if (erased != 0)
        registrationsChanged();
}

bool EventTap::isRegistered(std::string_view name) const
{
    assertMainThread();
    return std::any_of(m_registrations.begin(), m_registrations.end(),
        [&](const Registration& entry) { return entry.name == name; });
}

std::uint64_t EventTap::mask(ListenOnly listenOnly) const
{
    assertMainThread();
    return m_trusted ? m_masks[index(listenOnly)] : 0;
}

bool EventTap::refreshTrust()
{
    assertMainThread();
    m_trusted = m_source.isAccessibilityTrusted();
    applyMasks();
    return m_trusted;
}

bool EventTap::isTrusted() const
{
    assertMainThread();
    return m_trusted;
}

bool EventTap::postKey(std::uint32_t keyCode, std::uint64_t flags)
{
    assertMainThread();
    InputEvent down;
    down.type = EventType::keyDown;
    down.keyCode = keyCode;
    down.flags = flags;
    down.sourceUserData = ownEventUserData;
    InputEvent up = down;
    up.type = EventType::keyUp;
    // The key-up goes out even when the key-down failed, so that no key is left held down.
    bool postedDown = m_source.postEvent(down);
    bool postedUp = m_source.postEvent(up);
    return postedDown && postedUp;
}

std::optional<InputEvent> EventTap::runFilters(const InputEvent& event)
{
    assertMainThread();
    if (event.type >= 64)
        return event;
    auto chains = m_chains[index(ListenOnly::no)];
    std::optional<InputEvent> current = event;
    for (const auto& handler : (*chains)[event.type]) {
        current = (*handler)(*current);
        if (!current)
            break;
    }
    return current;
}

void EventTap::runListeners(const InputEvent& event)
{
    assertMainThread();
    if (event.type >= 64)
        return;
    auto chains = m_chains[index(ListenOnly::yes)];
    for (const auto& handler : (*chains)[event.type])
        (void)(*handler)(event);
}

void EventTap::registrationsChanged()
{
    std::array<std::shared_ptr<ChainTable>, 2> chains { std::make_shared<ChainTable>(),
        std::make_shared<ChainTable>() };
    m_masks = {};
    for (const auto& registration : m_registrations) {
        auto kind = index(registration.listenOnly);
        m_masks[kind] |= registration.types;
        for (std::uint32_t type = 0; type < 64; ++type) {
            if ((registration.types & eventMaskBit(type)) != 0)
                (*chains[kind])[type].push_back(registration.handler);
        }
    }
    m_chains = { std::move(chains[0]), std::move(chains[1]) };
    applyMasks();
}

void EventTap::applyMasks()
{
    for (auto listenOnly : { ListenOnly::no, ListenOnly::yes }) {
        auto wanted = mask(listenOnly);
        auto& applied = m_appliedMasks[index(listenOnly)];
        if (wanted == applied)
            continue;
        applied = wanted;
        m_worker->replaceTap(tapKind(listenOnly), wanted);
    }
}

} // namespace quillmar
