#include "core/windows/AX.h"

#include <cmath>
#include <limits>

namespace quillmar {

namespace {

template<typename T>
std::optional<T> as(const std::optional<AXValue>& value)
{
    if (!value)
        return std::nullopt;
    if (const T* typed = std::get_if<T>(&*value))
        return *typed;
    return std::nullopt;
}

// Ancestors are climbed at most this far: a broken application could report a parent cycle.
constexpr int maximumDepth = 64;

} // namespace

std::optional<AXValue> AX::value(AXElement element, std::string_view name) const
{
    if (element.isNull())
        return std::nullopt;
    return m_ax.attribute(element, name);
}

std::optional<std::string> AX::string(AXElement element, std::string_view name) const
{
    return as<std::string>(value(element, name));
}

std::optional<bool> AX::boolean(AXElement element, std::string_view name) const
{
    auto read = value(element, name);
    if (read && std::holds_alternative<double>(*read))
        return std::get<double>(*read) != 0;
    return as<bool>(read);
}

std::optional<Point> AX::point(AXElement element, std::string_view name) const
{
    return as<Point>(value(element, name));
}

std::optional<Size> AX::size(AXElement element, std::string_view name) const
{
    return as<Size>(value(element, name));
}

std::optional<AXElement> AX::element(AXElement element, std::string_view name) const
{
    auto found = as<AXElement>(value(element, name));
    if (found && found->isNull())
        return std::nullopt;
    return found;
}

std::optional<std::vector<AXElement>> AX::elements(AXElement element, std::string_view name) const
{
    return as<std::vector<AXElement>>(value(element, name));
}

std::optional<Rect> AX::frame(AXElement window) const
{
    auto origin = point(window, AXName::position);
    auto extent = size(window, AXName::size);
    if (!origin || !extent)
        return std::nullopt;
    return Rect { origin->x, origin->y, extent->width, extent->height };
}

AXElement AX::application(std::int32_t pid, Duration timeout) const
{
    auto app = m_ax.applicationElement(pid);
    if (!app.isNull())
        m_ax.setMessagingTimeout(app, timeout);
    return app;
}

std::optional<AXElement> AX::window(AXElement start, std::int32_t pid) const
{
    auto isWindow = [&](AXElement candidate) { return string(candidate, AXName::role) == AXName::windowRole; };
    if (start.isNull())
        return std::nullopt;
    if (isWindow(start))
        return start;
    if (auto owner = element(start, AXName::window))
        return owner;
    if (auto top = element(start, AXName::topLevelElement); top && isWindow(*top))
        return top;

    auto app = application(pid);
    auto current = start;
    for (int depth = 0; depth < maximumDepth; ++depth) {
        auto parent = element(current, AXName::parent);
        if (!parent || *parent == app)
            return std::nullopt;
        if (isWindow(*parent))
            return parent;
        current = *parent;
    }
    return std::nullopt;
}

std::optional<AXElement> AX::window(std::int32_t pid, std::uint32_t id, std::optional<Rect> frameHint,
    Duration timeout) const
{
    auto app = application(pid, timeout);
    if (app.isNull())
        return std::nullopt;
    auto windows = elements(app, AXName::windows);
    if (!windows)
        return std::nullopt;
    for (auto& candidate : *windows)
        m_ax.setMessagingTimeout(candidate, timeout);

    if (m_ax.canReadWindowNumbers()) {
        for (auto candidate : *windows) {
            if (m_ax.windowNumber(candidate) == id)
                return candidate;
        }
        return std::nullopt;
    }
    if (!frameHint)
        return std::nullopt;

    std::optional<AXElement> best;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (auto candidate : *windows) {
        auto candidateFrame = frame(candidate);
        if (!candidateFrame)
            continue;
        double distance = std::abs(candidateFrame->x - frameHint->x) + std::abs(candidateFrame->y - frameHint->y)
            + std::abs(candidateFrame->width - frameHint->width) + std::abs(candidateFrame->height - frameHint->height);
        if (distance <= frameHintTolerance && distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace quillmar
