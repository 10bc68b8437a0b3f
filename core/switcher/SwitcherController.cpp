#include "core/switcher/SwitcherController.h"

#include <algorithm>

#include "core/base/Utf8.h"
#include "core/desktop/KeyCodes.h"
#include "core/switcher/SwitcherLogic.h"

namespace quillmar {

namespace {

constexpr std::uint64_t chordModifiers = EventFlags::option | EventFlags::command | EventFlags::control;

std::uint64_t triggerFlag(SwitcherTrigger trigger)
{
    return trigger == SwitcherTrigger::command ? EventFlags::command : EventFlags::option;
}

// Text that can go into the query: something printable, no control characters.
bool isTypedText(const std::string& characters)
{
    auto codePoints = decodeUtf8(characters);
    if (codePoints.empty())
        return false;
    return std::none_of(codePoints.begin(), codePoints.end(),
        [](char32_t c) { return c < 0x20 || c == 0x7f || (c >= 0xf700 && c <= 0xf8ff); });
}

} // namespace

SwitcherController::SwitcherController(Runtime& runtime, SwitcherModel& model, SwitcherPorts ports,
    OptionsSource options, SuspensionCheck isSuspended)
    : m_runtime(runtime)
    , m_model(model)
    , m_ports(ports)
    , m_options(std::move(options))
    , m_isSuspended(std::move(isSuspended))
{
    assertMainThread();
    m_trigger = m_options().trigger;
}

SwitcherController::~SwitcherController()
{
    assertMainThread();
    setEnabled(false);
    m_guard.end();
}

void SwitcherController::assertMainThread() const
{
    m_runtime.mainQueue().assertMainThread("SwitcherController");
}

void SwitcherController::forward(std::function<void()> work)
{
    m_guard.post(m_runtime.mainQueue(), std::move(work));
}

bool SwitcherController::triggerHeld(std::uint64_t flags) const
{
    return (flags & triggerFlag(m_trigger)) != 0;
}

void SwitcherController::setEnabled(bool enabled)
{
    assertMainThread();
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    if (enabled) {
        auto options = m_options();
        m_trigger = options.trigger;
        m_ports.eventTap.registerHandler(tapName,
            { EventType::keyDown, EventType::keyUp, EventType::flagsChanged }, ListenOnly::no,
            [this](const InputEvent& event) { return handle(event); });
        m_ports.recency.claim(recencyClient, options.previews ? WarmPreviews::yes : WarmPreviews::no);
        m_ports.takeover.update(m_trigger == SwitcherTrigger::command);
    } else {
        end();
        m_ports.eventTap.unregister(tapName);
        m_ports.recency.release(recencyClient);
        m_ports.takeover.update(false);
    }
}

void SwitcherController::refreshTrigger()
{
    assertMainThread();
    m_trigger = m_options().trigger;
    m_ports.takeover.update(m_enabled && m_trigger == SwitcherTrigger::command);
}

std::optional<InputEvent> SwitcherController::handle(const InputEvent& event)
{
    SwitcherKeyEvent key { event.type, event.keyCode, event.flags, event.isAutorepeat, {} };
    if (event.type == EventType::keyDown) {
        // Shift alone: with the trigger held the layout would give Option-W's "∑" instead of "w".
        InputEvent plain = event;
        plain.flags = event.flags & EventFlags::shift;
        key.characters = m_ports.keyboard.characters(plain);
    }
    if (handle(key) == TapVerdict::swallow)
        return std::nullopt;
    return event;
}

TapVerdict SwitcherController::handle(const SwitcherKeyEvent& event)
{
    assertMainThread();
    if (m_isSuspended && m_isSuspended()) {
        if (m_active)
            forward([this] { end(); });
        return TapVerdict::pass;
    }
    switch (event.type) {
    case EventType::flagsChanged:
        if (m_active)
            forward([this, flags = event.flags] { flagsChanged(flags); });
        return TapVerdict::pass;
    case EventType::keyUp:
        return m_active ? TapVerdict::swallow : TapVerdict::pass;
    case EventType::keyDown:
        break;
    default:
        return TapVerdict::pass;
    }

    if (m_active) {
        if (m_model.isPinned() || triggerHeld(event.flags)) {
            forward([this, event] { key(event); });
            return TapVerdict::swallow;
        }
        // The trigger went up without its flags-changed event reaching us: this key ends the switch and
        // still goes to the app that comes forward.
        forward([this] { commit(); });
        return TapVerdict::pass;
    }

    if (event.keyCode != KeyCode::tab || (event.flags & chordModifiers) != triggerFlag(m_trigger))
        return TapVerdict::pass;
    // Claimed now, so that the next events are read as this session's even before `begin` has run.
    m_active = true;
    bool reverse = (event.flags & EventFlags::shift) != 0;
    forward([this, reverse] { begin({ .reverse = reverse, .pinned = false }); });
    return TapVerdict::swallow;
}

void SwitcherController::openPinned()
{
    assertMainThread();
    if (m_active)
        return;
    m_active = true;
    begin({ .reverse = false, .pinned = true });
}

void SwitcherController::begin(Start start)
{
    auto [reverse, pinned] = start;
    if (!m_active)
        return; // cancelled before it began
    ++m_token;
    m_shown = false;
    m_ready = false;
    m_pendingOffset = 0;
    m_lastShiftStep.reset();
    m_shiftDown = reverse;
    m_armedAt = Duration::zero();

    m_sessionOptions = m_options();
    m_trigger = m_sessionOptions.trigger;
    m_model.reset();
    m_model.setPreferences(m_sessionOptions);
    m_model.setPinned(pinned);
    auto screen = m_ports.panel.screenFrame();
    m_model.setScreen(screen ? std::optional<Size>(screen->size()) : std::nullopt);

    // The catalogue is read afresh on the main thread: the panel must show the windows as they are now.
    m_apps = m_ports.catalog.runningApps();
    WindowCatalogOptions catalogOptions { .includeMinimized = m_sessionOptions.minimizedWindows,
        .includeOtherSpaces = m_sessionOptions.spaces == SwitcherSpaces::all };
    auto windows = m_ports.catalog.windows(m_apps, catalogOptions);
    m_entries.clear();
    for (const auto& window : windows)
        m_entries.emplace(window.windowNumber, window);
    m_model.setGroups(SwitcherLogic::groups(m_apps, windows, m_ports.recency.recentPIDs(), m_sessionOptions, screen));

    std::optional<std::int32_t> activePID;
    for (const auto& app : m_apps) {
        if (app.isActive)
            activePID = app.pid;
    }
    m_initialSelection = SwitcherLogic::initialSelection(m_model.groups(), activePID, reverse);

    auto token = m_token;
    m_ports.clicks.start([this, alive = m_guard.token(), token] {
        if (alive.isAlive() && m_active && token == m_token)
            end();
    });

    if (pinned) {
        forward([this, token] { presentAfterDelay(token); });
    } else {
        m_presentItem = m_guard.postAfter(m_runtime.mainQueue(), presentDelay,
            [this, token] { presentAfterDelay(token); });
    }
}

void SwitcherController::presentAfterDelay(std::uint64_t token)
{
    if (token != m_token || !m_active)
        return; // a late callback of a session that has ended
    m_ready = true;
    present();
}

void SwitcherController::present()
{
    if (!m_active || m_shown || !m_ready)
        return;
    m_shown = true;
    auto count = m_model.itemCount();
    if (count > 0)
        m_model.select(SwitcherLogic::stepped(m_initialSelection, m_pendingOffset, count, /*wrap=*/true));
    m_pendingOffset = 0;
    m_ports.panel.show(m_model);
}

std::optional<std::size_t> SwitcherController::currentIndex() const
{
    if (m_shown)
        return m_model.selectedIndex();
    auto count = m_model.itemCount();
    if (count == 0)
        return std::nullopt;
    return SwitcherLogic::stepped(m_initialSelection, m_pendingOffset, count, /*wrap=*/true);
}

void SwitcherController::setCurrentIndex(std::size_t index)
{
    if (m_shown) {
        m_model.select(index);
        selectionChanged();
        return;
    }
    auto offset = static_cast<std::int64_t>(index) - static_cast<std::int64_t>(m_initialSelection);
    m_pendingOffset = std::clamp(offset, -maxPendingOffset, maxPendingOffset);
}

std::optional<SwitcherItem> SwitcherController::currentItem() const
{
    auto index = currentIndex();
    if (!index)
        return std::nullopt;
    auto items = SwitcherLogic::flatten(m_model.groups());
    if (*index >= items.size())
        return std::nullopt;
    return items[*index];
}

void SwitcherController::key(const SwitcherKeyEvent& event)
{
    if (!m_active)
        return;
    bool shift = (event.flags & EventFlags::shift) != 0;
    switch (event.keyCode) {
    case KeyCode::returnKey:
    case KeyCode::keypadEnter:
        commit();
        return;
    case KeyCode::tab: {
        if (shift && !event.isAutorepeat && m_lastShiftStep
            && m_runtime.clock().uptime() - *m_lastShiftStep <= shiftTabWindow) {
            m_lastShiftStep.reset(); // the Tab of the chord whose Shift already stepped back
            return;
        }
        move(shift ? -1 : 1, /*wrap=*/!event.isAutorepeat);
        return;
    }
    case KeyCode::deleteBackward:
    case KeyCode::deleteForward:
        if (m_model.dropLastQueryCharacter())
            m_model.refilter();
        return;
    case KeyCode::escape:
        if (m_model.clearQuery())
            m_model.refilter();
        else
            end();
        return;
    case KeyCode::leftArrow:
        move(-1, /*wrap=*/false);
        return;
    case KeyCode::rightArrow:
        move(1, /*wrap=*/false);
        return;
    case KeyCode::downArrow:
    case KeyCode::upArrow:
        if (m_shown) {
            if (auto index = m_model.selectedIndex())
                setCurrentIndex(SwitcherLogic::jumpGroup(*index, m_model.groups(), event.keyCode == KeyCode::downArrow));
        }
        return;
    case KeyCode::grave:
        if (auto index = currentIndex())
            setCurrentIndex(SwitcherLogic::nextInGroup(*index, m_model.groups()));
        return;
    default:
        break;
    }

    bool actionKey = event.characters == "w" || event.characters == "q";
    if (actionKey && m_sessionOptions.actionKeys && m_model.query().empty()) {
        if (event.isAutorepeat)
            return;
        if (event.characters == "w")
            closeSelected();
        else
            quitSelected();
        return;
    }
    if (m_shown && isTypedText(event.characters) && m_model.appendToQuery(event.characters))
        m_model.refilter();
}

void SwitcherController::flagsChanged(std::uint64_t flags)
{
    if (!m_active)
        return;
    bool shift = (flags & EventFlags::shift) != 0;
    if (shift && !m_shiftDown && m_model.query().empty()) {
        move(-1, /*wrap=*/true);
        m_lastShiftStep = m_runtime.clock().uptime();
    }
    m_shiftDown = shift;
    if (!m_model.isPinned() && !triggerHeld(flags))
        commit();
}

void SwitcherController::move(std::int64_t step, bool wrap)
{
    if (!m_shown) {
        m_pendingOffset = std::clamp(m_pendingOffset + step, -maxPendingOffset, maxPendingOffset);
        return;
    }
    auto count = m_model.itemCount();
    if (count == 0)
        return;
    m_model.select(SwitcherLogic::stepped(m_model.selectedIndex().value_or(0), step, count, wrap));
    selectionChanged();
}

void SwitcherController::selectionChanged()
{
    // An armed action key belongs to the card it was pressed on.
    auto item = m_model.selectedItem();
    const auto& armed = m_model.armedAction();
    if (armed && (!item || item->id() != armed->itemID))
        m_model.setArmedAction(std::nullopt);
}

void SwitcherController::commit()
{
    if (!m_active)
        return;
    auto item = currentItem();
    std::optional<WindowEntry> entry;
    if (item && item->windowNumber) {
        if (auto found = m_entries.find(*item->windowNumber); found != m_entries.end())
            entry = found->second;
    }
    end();
    if (!item)
        return;
    if (entry)
        m_ports.actions.focus(*entry);
    else
        m_ports.actions.activateApp(item->pid);
}

void SwitcherController::end()
{
    if (!m_active)
        return;
    m_active = false;
    if (m_presentItem) {
        m_presentItem->cancel();
        m_presentItem.reset();
    }
    m_ports.clicks.stop();
    if (m_shown)
        m_ports.panel.hide();
    m_shown = false;
    m_ready = false;
    m_pendingOffset = 0;
    m_lastShiftStep.reset();
    m_shiftDown = false;
    m_entries.clear();
    m_apps.clear();
    m_model.reset();
}

void SwitcherController::hover(std::size_t index)
{
    assertMainThread();
    if (!m_shown || index >= m_model.itemCount())
        return;
    setCurrentIndex(index);
}

void SwitcherController::choose(std::size_t index)
{
    assertMainThread();
    if (!m_shown || index >= m_model.itemCount())
        return;
    setCurrentIndex(index);
    commit();
}

std::optional<AppSnapshot> SwitcherController::appOf(std::int32_t pid) const
{
    for (const auto& app : m_apps) {
        if (app.pid == pid)
            return app;
    }
    return std::nullopt;
}

bool SwitcherController::confirmSecondPress(SwitcherAction action, const SwitcherItem& item)
{
    SwitcherModel::ArmedAction wanted { item.id(), action == SwitcherAction::quit };
    auto now = m_runtime.clock().uptime();
    if (m_model.armedAction() == wanted && now - m_armedAt <= secondPressWindow) {
        m_model.setArmedAction(std::nullopt);
        return true;
    }
    m_model.setArmedAction(wanted);
    m_armedAt = now;
    return false;
}

void SwitcherController::closeSelected()
{
    auto item = currentItem();
    if (!item || !item->windowNumber)
        return; // a windowless card has no window to close
    auto entry = m_entries.find(*item->windowNumber);
    if (entry == m_entries.end())
        return;
    const auto* group = m_model.selectedGroup();
    if (group && SwitcherLogic::needsSecondPress(SwitcherAction::close, *item, *group)
        && !confirmSecondPress(SwitcherAction::close, *item))
        return;
    auto id = item->id();
    m_model.markClosing(id, true);
    if (!m_ports.actions.close(entry->second)) {
        m_model.markClosing(id, false);
        return;
    }
    auto token = m_token;
    m_guard.postAfter(m_runtime.mainQueue(), closeCheckDelay,
        [this, windowNumber = *item->windowNumber, token] { verifyClose(windowNumber, token); });
}

void SwitcherController::verifyClose(std::uint32_t windowNumber, std::uint64_t token)
{
    if (!m_active || token != m_token)
        return;
    auto entry = m_entries.find(windowNumber);
    if (entry == m_entries.end())
        return;
    auto id = SwitcherItem { windowNumber, entry->second.pid, {}, {} }.id();
    bool stillThere = false;
    if (auto app = appOf(entry->second.pid)) {
        WindowCatalogOptions everywhere { .includeMinimized = true, .includeOtherSpaces = true };
        auto windows = m_ports.catalog.windows({ *app }, everywhere);
        stillThere = std::any_of(windows.begin(), windows.end(),
            [&](const WindowEntry& window) { return window.windowNumber == windowNumber; });
    }
    if (stillThere) {
        m_model.markClosing(id, false); // the app kept it, perhaps to ask about unsaved changes
        return;
    }
    m_entries.erase(entry);
    m_model.removeItems({ id });
}

void SwitcherController::quitSelected()
{
    auto item = currentItem();
    if (!item)
        return;
    SwitcherGroup app;
    for (const auto& group : m_model.unfilteredGroups()) {
        if (group.pid == item->pid)
            app = group;
    }
    if (SwitcherLogic::needsSecondPress(SwitcherAction::quit, *item, app)
        && !confirmSecondPress(SwitcherAction::quit, *item))
        return;
    std::set<std::string> ids;
    for (const auto& card : app.items)
        ids.insert(card.id());
    ids.insert(item->id());
    for (const auto& id : ids)
        m_model.markClosing(id, true);
    if (!m_ports.terminator.terminate(item->pid)) {
        for (const auto& id : ids)
            m_model.markClosing(id, false);
        return;
    }
    auto token = m_token;
    m_guard.postAfter(m_runtime.mainQueue(), quitCheckInterval,
        [this, pid = item->pid, ids, token] { verifyQuit(pid, ids, 1, token); });
}

void SwitcherController::verifyQuit(std::int32_t pid, std::set<std::string> ids, int attempt, std::uint64_t token)
{
    if (!m_active || token != m_token)
        return;
    if (!m_ports.terminator.isRunning(pid)) {
        std::erase_if(m_entries, [pid](const auto& entry) { return entry.second.pid == pid; });
        m_model.removeItems(ids);
        return;
    }
    if (attempt >= quitCheckAttempts) {
        for (const auto& id : ids)
            m_model.markClosing(id, false); // it declined, or is still asking the user
        return;
    }
    m_guard.postAfter(m_runtime.mainQueue(), quitCheckInterval,
        [this, pid, ids = std::move(ids), attempt, token] { verifyQuit(pid, ids, attempt + 1, token); });
}

} // namespace quillmar
