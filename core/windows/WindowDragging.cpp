#include "core/windows/WindowDragging.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace quillmar {

namespace {

Point location(const InputEvent& event)
{
    return { event.location.x, event.location.y };
}

double length(double x, double y)
{
    return std::hypot(x, y);
}

std::optional<MouseButton> buttonOf(std::uint32_t type)
{
    switch (type) {
    case EventType::leftMouseDown:
    case EventType::leftMouseUp:
    case EventType::leftMouseDragged:
        return MouseButton::left;
    case EventType::rightMouseDown:
    case EventType::rightMouseUp:
    case EventType::rightMouseDragged:
        return MouseButton::right;
    default:
        return std::nullopt;
    }
}

// The frame of a resize that moves `edges` by the pointer's displacement (dx, dy), top-left. A moved left or
// top edge keeps the opposite edge where it was, also when the minimum size stops it.
Rect resized(const Rect& start, ResizeEdges edges, double dx, double dy)
{
    Rect frame = start;
    if (edges.horizontal > 0) {
        frame.width = std::max(start.width + dx, WindowDragging::minimumWidth);
    } else if (edges.horizontal < 0) {
        frame.width = std::max(start.width - dx, WindowDragging::minimumWidth);
        frame.x = start.maxX() - frame.width;
    }
    if (edges.vertical > 0) {
        frame.height = std::max(start.height + dy, WindowDragging::minimumHeight);
    } else if (edges.vertical < 0) {
        frame.height = std::max(start.height - dy, WindowDragging::minimumHeight);
        frame.y = start.maxY() - frame.height;
    }
    return frame;
}

} // namespace

WindowDragging::WindowDragging(Runtime& runtime, EventTap& tap, Ports ports, WindowManager& manager,
    const WindowsPreferences& preferences)
    : m_runtime(runtime)
    , m_tap(tap)
    , m_ports(ports)
    , m_ax(ports.accessibility)
    , m_server(ports.windows)
    , m_manager(manager)
    , m_preferences(preferences)
    , m_mover(runtime, ports.accessibility)
{
}

WindowDragging::~WindowDragging()
{
    m_guard.end();
    if (m_registered)
        m_tap.unregister(registrationName);
}

double WindowDragging::now() const
{
    return std::chrono::duration<double>(m_runtime.clock().uptime()).count();
}

std::vector<ScreenInfo> WindowDragging::screens() const
{
    return m_ports.screens.screens();
}

void WindowDragging::configure(Modes modes)
{
    m_snapOn = modes.snap;
    m_chordOn = modes.chordDrags;
    if (!m_snapOn && !m_chordOn) {
        if (m_registered)
            m_tap.unregister(registrationName);
        m_registered = false;
        hideOverlay();
        m_titleDrag.reset();
        m_gesture.reset();
        return;
    }

    // Missing or not a number: the Dock's default, on.
    auto dock = m_ports.systemPreferences.number("com.apple.dock", "enterMissionControlByTopWindowDrag");
    m_topDragOpensMissionControl = !dock || *dock != 0;

    std::vector<std::uint32_t> types { EventType::leftMouseDown, EventType::leftMouseUp, EventType::leftMouseDragged };
    if (m_chordOn) {
        types.insert(types.end(),
            { EventType::rightMouseDown, EventType::rightMouseUp, EventType::rightMouseDragged });
    }
    m_listenOnly = !m_chordOn;
    m_tap.registerHandler(registrationName, std::move(types), m_listenOnly ? ListenOnly::yes : ListenOnly::no,
        [this](const InputEvent& event) { return handle(event); });
    m_registered = true;
}

std::optional<InputEvent> WindowDragging::handle(const InputEvent& event)
{
    if (!m_ports.accessibility.isTrusted())
        return event;
    auto button = buttonOf(event.type);
    if (!button)
        return event;

    switch (event.type) {
    case EventType::leftMouseDown:
    case EventType::rightMouseDown:
        if (m_chordOn && !m_gesture && beginGesture(event))
            return std::nullopt;
        if (event.type == EventType::leftMouseDown && m_snapOn && !m_gesture)
            beginTitleDrag(event);
        return event;
    case EventType::leftMouseDragged:
    case EventType::rightMouseDragged:
        if (m_gesture && m_gesture->button == *button) {
            dragGesture(event);
            return std::nullopt;
        }
        if (event.type == EventType::leftMouseDragged && m_titleDrag)
            return dragTitle(event);
        return event;
    default:
        if (m_gesture && m_gesture->button == *button)
            return endGesture(event);
        if (event.type == EventType::leftMouseUp && m_titleDrag)
            endTitleDrag();
        return event;
    }
}

std::optional<SnapZones::Zone> WindowDragging::zone(Point pointer)
{
    auto found = zoneWithScreen(pointer);
    if (!found)
        return std::nullopt;
    return found->first;
}

std::optional<std::pair<SnapZones::Zone, ScreenInfo>> WindowDragging::zoneWithScreen(Point pointer)
{
    auto all = screens();
    Point flippedPointer = flipped(pointer, m_ports.screens.mainDisplayHeight());
    auto found = SnapZones::zone(flippedPointer, all, m_samples.speed(now()), m_preferences.snapConfig());
    if (!found || found->screen >= all.size())
        return std::nullopt;
    return std::pair { *found, all[found->screen] };
}

void WindowDragging::showZone(const std::optional<std::pair<SnapZones::Zone, ScreenInfo>>& zone, const Rect& frame)
{
    if (!zone) {
        hideOverlay();
        return;
    }
    const auto& [found, screen] = *zone;
    Rect current = frame.flipped(m_ports.screens.mainDisplayHeight());
    m_ports.overlay.show(layoutFrame(found.layout, screen.visibleFrame, current, m_preferences.windowGap()), screen);
    m_overlayShown = true;
}

void WindowDragging::hideOverlay()
{
    if (!m_overlayShown)
        return;
    m_ports.overlay.hide();
    m_overlayShown = false;
}

// Title-bar drags.

void WindowDragging::beginTitleDrag(const InputEvent& event)
{
    Point pointer = location(event);
    auto window = m_server.normalWindow(pointer);
    if (!window)
        return;
    TitleDrag drag;
    drag.windowNumber = window->number;
    drag.pid = window->ownerPid;
    drag.startFrame = window->bounds;
    drag.lastFrame = window->bounds;
    drag.startPointer = pointer;
    m_titleDrag = drag;
    m_samples.clear();
    m_samples.add(now(), pointer);
}

std::optional<InputEvent> WindowDragging::dragTitle(const InputEvent& event)
{
    auto& drag = *m_titleDrag;
    Point pointer = location(event);
    double time = now();
    m_samples.add(time, pointer);

    // Undecided drags read the window on every event; a confirmed one only needs to notice it vanish, at a
    // bounded rate since the list is costly; a resize or an abandoned drag is left alone.
    bool poll = drag.state == TitleDragState::undecided
        || (drag.state == TitleDragState::confirmed
            && (!drag.lastPoll || time - *drag.lastPoll >= confirmedPollInterval));
    if (poll) {
        drag.lastPoll = time;
        auto window = m_server.info(drag.windowNumber);
        if (!window) {
            hideOverlay();
            m_titleDrag.reset();
            return event;
        }
        drag.lastFrame = window->bounds;
        if (drag.state == TitleDragState::undecided)
            classify(drag, window->bounds, pointer);
    }
    if (drag.state != TitleDragState::confirmed)
        return event;

    auto found = zoneWithScreen(pointer);
    showZone(found, drag.lastFrame);
    drag.zone = found ? static_cast<std::size_t>(found->first.layout) : noLayoutIndex;
    drag.zoneScreen.reset();
    if (!found)
        return event;
    drag.zoneScreen = found->second;

    if (!m_topDragOpensMissionControl || !isTopEdgeLayout(found->first.layout))
        return event;
    // Keep the pointer a point below the top of the screen so that the Dock does not open Mission Control.
    double lowest = m_ports.screens.mainDisplayHeight() - drag.zoneScreen->frame.maxY() + 1.0;
    if (event.location.y >= lowest)
        return event;
    InputEvent clamped = event;
    clamped.location.y = lowest;
    // A listen-only registration cannot change the event, so the pointer itself is moved.
    if (m_listenOnly)
        m_ports.mouse.warpPointer(clamped.location);
    return clamped;
}

void WindowDragging::classify(TitleDrag& drag, const Rect& bounds, Point pointer)
{
    if (std::abs(bounds.width - drag.startFrame.width) > sizeChangeLimit
        || std::abs(bounds.height - drag.startFrame.height) > sizeChangeLimit) {
        drag.state = TitleDragState::resize;
        return;
    }
    double dx = bounds.x - drag.startFrame.x;
    double dy = bounds.y - drag.startFrame.y;
    double mx = pointer.x - drag.startPointer.x;
    double my = pointer.y - drag.startPointer.y;
    double moved = length(dx, dy);
    double pointed = length(mx, my);
    if (moved > windowMoveMinimum && pointed > pointerMoveMinimum) {
        double cosine = (mx * dx + my * dy) / (moved * pointed);
        double ratio = moved / pointed;
        if (cosine >= followCosine && ratio >= followRatioMinimum && ratio <= followRatioMaximum) {
            drag.state = TitleDragState::confirmed;
            unsnapIfNeeded(drag.windowNumber, drag.pid, bounds, pointer);
            return;
        }
    }
    // The pointer went far while the window stayed (a drag inside the content), or the window moved some other
    // way than with the pointer.
    if ((pointed > abandonDistance && moved <= windowMoveMinimum) || moved > windowMoveMinimum)
        drag.state = TitleDragState::abandoned;
}

void WindowDragging::endTitleDrag()
{
    auto drag = std::exchange(m_titleDrag, std::nullopt);
    hideOverlay();
    if (!drag || drag->state != TitleDragState::confirmed || drag->zone == noLayoutIndex || !drag->zoneScreen)
        return;
    snap(drag->windowNumber, drag->pid, static_cast<WindowLayout>(drag->zone), *drag->zoneScreen,
        drag->startFrame.size());
}

void WindowDragging::snap(std::uint32_t windowID, std::int32_t pid, WindowLayout layout, const ScreenInfo& screen,
    Size original)
{
    std::optional<Rect> hint;
    if (auto info = m_server.info(windowID))
        hint = info->bounds;
    auto window = m_ax.window(pid, windowID, hint);
    if (!window)
        return;
    m_manager.apply(layout, *window, screen, Feedback::off);
    m_guard.post(m_runtime.mainQueue(), [this, windowID, original] { recordSnap(windowID, original); });
}

void WindowDragging::recordSnap(std::uint32_t windowID, Size original)
{
    auto info = m_server.info(windowID);
    if (!info)
        return;
    std::erase_if(m_snapped, [&](const auto& entry) { return entry.first == windowID; });
    m_snapped.emplace_back(windowID, SnapRecord { original, info->bounds });
    if (m_snapped.size() > snappedLimit)
        m_snapped.erase(m_snapped.begin());
}

void WindowDragging::unsnapIfNeeded(std::uint32_t windowNumber, std::int32_t pid, const Rect& frame, Point pointer)
{
    if (!m_preferences.snapRestoresSize())
        return;
    auto entry = std::find_if(m_snapped.begin(), m_snapped.end(),
        [&](const auto& candidate) { return candidate.first == windowNumber; });
    if (entry == m_snapped.end())
        return;
    SnapRecord record = entry->second;
    m_snapped.erase(entry);
    // Resized since the snap: the user has made it their own size.
    if (std::abs(frame.width - record.snappedFrame.width) >= unsnapTolerance
        || std::abs(frame.height - record.snappedFrame.height) >= unsnapTolerance)
        return;

    double ratio = frame.width > 0 ? std::clamp((pointer.x - frame.minX()) / frame.width, 0.0, 1.0) : 0.5;
    Rect target { std::round(pointer.x - record.originalSize.width * ratio), frame.minY(), record.originalSize.width,
        record.originalSize.height };
    if (auto window = m_ax.window(pid, windowNumber, frame))
        m_mover.submit(*window, target, /*resize=*/true);
}

// Modifier drags.

bool WindowDragging::beginGesture(const InputEvent& event)
{
    if (!isHeld(m_preferences.dragChord(), event.flags))
        return false;
    bool right = event.type == EventType::rightMouseDown;
    bool shift = (event.flags & EventFlags::shift) != 0;
    GestureMode mode;
    if ((right || shift) && m_preferences.dragResize())
        mode = GestureMode::resize;
    else if (!right && m_preferences.dragMove())
        mode = GestureMode::move;
    else
        return false;

    Point pointer = location(event);
    auto info = m_server.normalWindow(pointer);
    if (!info)
        return false;
    auto window = m_ax.window(info->ownerPid, info->number, info->bounds);
    if (!window || m_ax.boolean(*window, AXName::fullScreen) == true)
        return false;

    Gesture gesture;
    gesture.mode = mode;
    gesture.button = right ? MouseButton::right : MouseButton::left;
    gesture.window = *window;
    gesture.windowNumber = info->number;
    gesture.pid = info->ownerPid;
    gesture.app = m_ax.application(info->ownerPid);
    // The enhanced interface animates every frame the mover writes; it is off for the whole gesture.
    if (!gesture.app.isNull() && m_ax.boolean(gesture.app, AXName::enhancedInterface) == true)
        gesture.enhancedWasOn = m_ports.accessibility.setAttribute(gesture.app, AXName::enhancedInterface, false);
    gesture.startFrame = info->bounds;
    gesture.lastFrame = info->bounds;
    gesture.startPointer = pointer;
    if (mode == GestureMode::resize)
        gesture.edges = DragClassifier::resizeEdges(pointer, info->bounds);
    gesture.heldMouseDown = event;
    m_gesture = gesture;
    m_samples.clear();
    m_samples.add(now(), pointer);
    return true;
}

void WindowDragging::dragGesture(const InputEvent& event)
{
    auto& gesture = *m_gesture;
    Point pointer = location(event);
    double dx = pointer.x - gesture.startPointer.x;
    double dy = pointer.y - gesture.startPointer.y;
    m_samples.add(now(), pointer);
    if (!gesture.passedThreshold) {
        if (length(dx, dy) < gestureThreshold)
            return;
        gesture.passedThreshold = true;
    }

    bool resizing = gesture.mode == GestureMode::resize;
    gesture.lastFrame = resizing ? resized(gesture.startFrame, gesture.edges, dx, dy)
                                 : Rect { gesture.startFrame.x + dx, gesture.startFrame.y + dy,
                                       gesture.startFrame.width, gesture.startFrame.height };
    m_mover.submit(gesture.window, gesture.lastFrame, resizing);

    if (!resizing && m_snapOn) {
        auto found = zoneWithScreen(pointer);
        gesture.zone.reset();
        gesture.zoneScreen.reset();
        if (found) {
            gesture.zone = found->first;
            gesture.zoneScreen = found->second;
        }
        showZone(found, gesture.lastFrame);
    }
}

std::optional<InputEvent> WindowDragging::endGesture(const InputEvent& event)
{
    Gesture gesture = *std::exchange(m_gesture, std::nullopt);
    std::optional<InputEvent> verdict;

    if (!gesture.passedThreshold) {
        // A chord click without a drag still belongs to the application: the held press goes back, marked as
        // ours so the tap lets it by. Only while the button is still down, or the press would come unpaired.
        if (m_ports.mouse.isButtonDown(gesture.button)) {
            InputEvent press = gesture.heldMouseDown;
            press.sourceUserData = ownEventUserData;
            if (m_ports.mouse.post(press))
                verdict = event;
        }
    } else {
        m_mover.submit(gesture.window, gesture.lastFrame, gesture.mode == GestureMode::resize);
        hideOverlay();
        if (gesture.zone && gesture.zoneScreen) {
            auto layout = gesture.zone->layout;
            auto screen = *gesture.zoneScreen;
            // After the mover's last write, so that the snapped frame is the one that stays.
            m_mover.whenIdle([this, &mainQueue = m_runtime.mainQueue(), token = m_guard.token(), gesture, layout, screen] {
                token.post(mainQueue, [this, gesture, layout, screen] {
                    m_manager.apply(layout, gesture.window, screen, Feedback::off);
                    recordSnap(gesture.windowNumber, gesture.startFrame.size());
                });
            });
        }
    }

    m_guard.postAfter(m_runtime.mainQueue(), gestureCleanupDelay, [this, gesture] {
        m_mover.whenIdle([this, token = m_guard.token(), gesture] {
            if (!gesture.enhancedWasOn)
                return;
            token.runWhileAlive(
                [&] { m_ports.accessibility.setAttribute(gesture.app, AXName::enhancedInterface, true); });
        });
    });
    return verdict;
}

} // namespace quillmar
