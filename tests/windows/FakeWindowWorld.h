#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/windows/Accessibility.h"
#include "core/windows/RunningApplications.h"
#include "core/windows/WindowList.h"

namespace quillmar {

// A desktop of other applications' windows for tests: both the accessibility layer and the window server's
// list read it, so a write through one shows in the other. Windows can clamp writes to a box, ignore a
// number of writes (a lagging application), vanish, and every write is recorded.
class FakeWindowWorld final : public Accessibility, public WindowList, public RunningApplications {
public:
    struct Window {
        std::uint32_t number = 0;
        std::int32_t pid = 0;
        std::string title {};
        Rect frame {}; // top-left
        std::optional<std::string> role = "AXWindow";
        std::optional<std::string> subrole = "AXStandardWindow";
        bool minimized = false;
        bool fullScreen = false;
        bool onCurrentSpace = true;
        std::optional<bool> positionSettable = true;
        bool frameReadable = true;
        std::int64_t layer = 0;
        double alpha = 1.0;
        // Position and size writes are kept inside this box (top-left), as an app keeps itself on screen.
        std::optional<Rect> clampTo {};
        // This many position or size writes are dropped before the app starts to follow them.
        int ignoredWrites = 0;
    };

    struct App {
        std::int32_t pid = 0;
        std::string name {};
        std::string bundleID {};
        bool hidden = false;
        bool enhancedInterface = false;
        std::optional<std::uint32_t> focusedWindow {};
        std::optional<std::uint32_t> mainWindow {};
    };

    struct Write {
        AXElement element;
        std::string name;
        AXValue value;
        friend bool operator==(const Write&, const Write&) = default;
    };

    // Front to back.
    std::vector<Window> windows;
    std::vector<App> apps;
    std::optional<std::int32_t> frontmost;
    bool trusted = true;
    bool windowNumbersReadable = true;
    std::int32_t ownPid = 4242;
    std::vector<Write> writes;
    std::vector<std::pair<std::int32_t, std::optional<std::uint32_t>>> activations;
    std::vector<std::pair<AXElement, std::string>> actions;
    std::map<std::uint64_t, Duration> timeouts;
    mutable int infoCalls = 0; // window-server lookups of one window

    Window& addWindow(Window window);
    App& addApp(App app);
    Window* window(std::uint32_t number);
    void remove(std::uint32_t number);

    static AXElement windowElement(std::uint32_t number) { return { number }; }
    static AXElement appElement(std::int32_t pid) { return { appBase + static_cast<std::uint64_t>(pid) }; }
    static AXElement closeButton(std::uint32_t number) { return { closeBase + number }; }

    // The writes of attribute `name`, in order.
    std::vector<Write> writesOf(std::string_view name) const;

    // Accessibility
    bool isTrusted() const override { return trusted; }
    AXElement applicationElement(std::int32_t pid) override;
    void setMessagingTimeout(AXElement element, Duration timeout) override { timeouts[element.id] = timeout; }
    std::optional<std::int32_t> processID(AXElement element) const override;
    std::optional<AXValue> attribute(AXElement element, std::string_view name) const override;
    bool setAttribute(AXElement element, std::string_view name, const AXValue& value) override;
    std::optional<bool> isAttributeSettable(AXElement element, std::string_view name) const override;
    bool performAction(AXElement element, std::string_view name) override;
    bool canReadWindowNumbers() const override { return windowNumbersReadable; }
    std::optional<std::uint32_t> windowNumber(AXElement window) const override;

    // WindowList
    std::vector<WindowServerInfo> list(WindowListScope scope) const override;
    std::optional<WindowServerInfo> info(std::uint32_t windowNumber) const override;
    std::int32_t ownProcessID() const override { return ownPid; }

    // RunningApplications
    std::vector<AppSnapshot> applications() const override;
    std::optional<std::int32_t> frontmostProcess() const override { return frontmost; }
    bool activate(std::int32_t pid, std::optional<std::uint32_t> window) override;

private:
    static constexpr std::uint64_t appBase = 1'000'000;
    static constexpr std::uint64_t closeBase = 2'000'000;
    const Window* findWindow(AXElement element) const;
    const App* findApp(AXElement element) const;
    WindowServerInfo infoOf(const Window& window) const;
};

} // namespace quillmar
