#include "tests/windows/FakeWindowWorld.h"

#include <algorithm>

namespace quillmar {

FakeWindowWorld::Window& FakeWindowWorld::addWindow(Window window)
{
    windows.push_back(std::move(window));
    return windows.back();
}

FakeWindowWorld::App& FakeWindowWorld::addApp(App app)
{
    apps.push_back(std::move(app));
    return apps.back();
}

FakeWindowWorld::Window* FakeWindowWorld::window(std::uint32_t number)
{
    auto found = std::find_if(windows.begin(), windows.end(), [&](const Window& w) { return w.number == number; });
    return found == windows.end() ? nullptr : &*found;
}

void FakeWindowWorld::remove(std::uint32_t number)
{
    std::erase_if(windows, [&](const Window& w) { return w.number == number; });
}

std::vector<FakeWindowWorld::Write> FakeWindowWorld::writesOf(std::string_view name) const
{
    std::vector<Write> found;
    for (const auto& write : writes) {
        if (write.name == name)
            found.push_back(write);
    }
    return found;
}

const FakeWindowWorld::Window* FakeWindowWorld::findWindow(AXElement element) const
{
    auto found = std::find_if(windows.begin(), windows.end(), [&](const Window& w) { return w.number == element.id; });
    return found == windows.end() ? nullptr : &*found;
}

const FakeWindowWorld::App* FakeWindowWorld::findApp(AXElement element) const
{
    auto found = std::find_if(apps.begin(), apps.end(), [&](const App& a) { return appElement(a.pid) == element; });
    return found == apps.end() ? nullptr : &*found;
}

AXElement FakeWindowWorld::applicationElement(std::int32_t pid)
{
    return appElement(pid);
}

std::optional<std::int32_t> FakeWindowWorld::processID(AXElement element) const
{
    if (auto* w = findWindow(element))
        return w->pid;
    if (auto* a = findApp(element))
        return a->pid;
    return std::nullopt;
}

std::optional<AXValue> FakeWindowWorld::attribute(AXElement element, std::string_view name) const
{
    if (auto* app = findApp(element)) {
        auto windowOf = [&](std::optional<std::uint32_t> number) -> std::optional<AXValue> {
            if (!number || !std::any_of(windows.begin(), windows.end(), [&](const Window& w) { return w.number == *number; }))
                return std::nullopt;
            return windowElement(*number);
        };
        if (name == AXName::enhancedInterface)
            return app->enhancedInterface;
        if (name == AXName::focusedWindow)
            return windowOf(app->focusedWindow);
        if (name == AXName::mainWindow)
            return windowOf(app->mainWindow);
        if (name == AXName::role)
            return std::string("AXApplication");
        if (name == AXName::windows) {
            // Like the real layer, only the current Space's windows are listed.
            std::vector<AXElement> listed;
            for (const auto& w : windows) {
                if (w.pid == app->pid && w.onCurrentSpace)
                    listed.push_back(windowElement(w.number));
            }
            return listed;
        }
        return std::nullopt;
    }
    const Window* w = findWindow(element);
    if (!w)
        return std::nullopt;
    if (name == AXName::role && w->role)
        return *w->role;
    if (name == AXName::subrole && w->subrole)
        return *w->subrole;
    if (name == AXName::title)
        return w->title;
    if (name == AXName::position && w->frameReadable)
        return Point { w->frame.x, w->frame.y };
    if (name == AXName::size && w->frameReadable)
        return Size { w->frame.width, w->frame.height };
    if (name == AXName::minimized)
        return w->minimized;
    if (name == AXName::fullScreen)
        return w->fullScreen;
    if (name == AXName::closeButton)
        return closeButton(w->number);
    if (name == AXName::parent)
        return appElement(w->pid);
    return std::nullopt;
}

bool FakeWindowWorld::setAttribute(AXElement element, std::string_view name, const AXValue& value)
{
    writes.push_back({ element, std::string(name), value });
    if (auto* app = const_cast<App*>(findApp(element))) {
        if (name == AXName::enhancedInterface && std::holds_alternative<bool>(value)) {
            app->enhancedInterface = std::get<bool>(value);
            return true;
        }
        return false;
    }
    auto* w = const_cast<Window*>(findWindow(element));
    if (!w)
        return false;
    if (name == AXName::minimized && std::holds_alternative<bool>(value)) {
        w->minimized = std::get<bool>(value);
        return true;
    }
    bool isPosition = name == AXName::position && std::holds_alternative<Point>(value);
    bool isSize = name == AXName::size && std::holds_alternative<Size>(value);
    if (!isPosition && !isSize)
        return false;
    if (w->ignoredWrites > 0) {
        --w->ignoredWrites;
        return true;
    }
    if (isPosition) {
        auto p = std::get<Point>(value);
        w->frame.x = p.x;
        w->frame.y = p.y;
    } else {
        auto s = std::get<Size>(value);
        w->frame.width = s.width;
        w->frame.height = s.height;
    }
    if (w->clampTo) {
        const Rect& box = *w->clampTo;
        w->frame.width = std::min(w->frame.width, box.width);
        w->frame.height = std::min(w->frame.height, box.height);
        w->frame.x = std::clamp(w->frame.x, box.minX(), box.maxX() - w->frame.width);
        w->frame.y = std::clamp(w->frame.y, box.minY(), box.maxY() - w->frame.height);
    }
    return true;
}

std::optional<bool> FakeWindowWorld::isAttributeSettable(AXElement element, std::string_view name) const
{
    const Window* w = findWindow(element);
    if (!w || name != AXName::position)
        return std::nullopt;
    return w->positionSettable;
}

bool FakeWindowWorld::performAction(AXElement element, std::string_view name)
{
    actions.emplace_back(element, std::string(name));
    if (element.id >= closeBase && name == AXName::pressAction) {
        auto number = static_cast<std::uint32_t>(element.id - closeBase);
        if (!window(number))
            return false;
        remove(number);
        return true;
    }
    return findWindow(element) != nullptr;
}

std::optional<std::uint32_t> FakeWindowWorld::windowNumber(AXElement element) const
{
    if (!windowNumbersReadable)
        return std::nullopt;
    if (auto* w = findWindow(element))
        return w->number;
    return std::nullopt;
}

WindowServerInfo FakeWindowWorld::infoOf(const Window& w) const
{
    std::string owner;
    for (const auto& app : apps) {
        if (app.pid == w.pid)
            owner = app.name;
    }
    return { w.number, w.pid, owner, w.title, w.layer, w.alpha, w.frame };
}

std::vector<WindowServerInfo> FakeWindowWorld::list(WindowListScope scope) const
{
    std::vector<WindowServerInfo> listed;
    for (const auto& w : windows) {
        if (scope == WindowListScope::onScreenOnly && (w.minimized || !w.onCurrentSpace))
            continue;
        listed.push_back(infoOf(w));
    }
    return listed;
}

std::optional<WindowServerInfo> FakeWindowWorld::info(std::uint32_t number) const
{
    ++infoCalls;
    for (const auto& w : windows) {
        if (w.number == number)
            return infoOf(w);
    }
    return std::nullopt;
}

std::vector<AppSnapshot> FakeWindowWorld::applications() const
{
    std::vector<AppSnapshot> snapshots;
    for (const auto& app : apps)
        snapshots.push_back({ app.pid, app.name, app.bundleID, app.hidden, frontmost == app.pid });
    return snapshots;
}

bool FakeWindowWorld::activate(std::int32_t pid, std::optional<std::uint32_t> window)
{
    activations.emplace_back(pid, window);
    bool known = std::any_of(apps.begin(), apps.end(), [&](const App& a) { return a.pid == pid; });
    if (known)
        frontmost = pid;
    return known;
}

} // namespace quillmar
