#pragma once

#include "core/windows/Accessibility.h"
#include "core/windows/Haptics.h"
#include "core/windows/LayoutHud.h"
#include "core/windows/MouseEvents.h"
#include "core/windows/RunningApplications.h"
#include "core/windows/Screens.h"
#include "core/windows/SnapOverlay.h"
#include "core/windows/SystemPreferences.h"
#include "core/windows/WindowList.h"

namespace quillmar {

// The ports of window management where the system offers nothing: each answers "not here" and changes nothing.
// System factories hand them out for ports without a backend; the command line and the tests use them too.

// Accessibility on a system without a backend: never trusted, every element missing, every write refused.
class NullAccessibility final : public Accessibility {
public:
    bool isTrusted() const override;
    AXElement applicationElement(std::int32_t pid) override;
    void setMessagingTimeout(AXElement element, Duration timeout) override;
    std::optional<std::int32_t> processID(AXElement element) const override;
    std::optional<AXValue> attribute(AXElement element, std::string_view name) const override;
    bool setAttribute(AXElement element, std::string_view name, const AXValue& value) override;
    std::optional<bool> isAttributeSettable(AXElement element, std::string_view name) const override;
    bool performAction(AXElement element, std::string_view name) override;
    bool canReadWindowNumbers() const override;
    std::optional<std::uint32_t> windowNumber(AXElement window) const override;
};

// A window list on a system without a backend: always empty.
class NullWindowList final : public WindowList {
public:
    std::vector<WindowServerInfo> list(WindowListScope scope) const override;
    std::optional<WindowServerInfo> info(std::uint32_t windowNumber) const override;
    std::int32_t ownProcessID() const override;
};

// Screens on a system without a backend: none, and a main height of 0.
class NullScreens final : public Screens {
public:
    std::vector<ScreenInfo> screens() const override;
    double mainDisplayHeight() const override;
};

// Running applications on a system without a backend: none, and nothing can be activated.
class NullRunningApplications final : public RunningApplications {
public:
    std::vector<AppSnapshot> applications() const override;
    std::optional<std::int32_t> frontmostProcess() const override;
    bool activate(std::int32_t pid, std::optional<std::uint32_t> window) override;
};

// Haptics on a system without a backend: nothing happens.
class NullHaptics final : public Haptics {
public:
    void performAlignment() override;
};

// The heads-up display on a system without a backend: nothing is shown.
class NullLayoutHud final : public LayoutHud {
public:
    void show(std::string_view title, std::string_view symbol) override;
};

// The snap outline on a system without a backend: nothing is drawn.
class NullSnapOverlay final : public SnapOverlay {
public:
    void show(const Rect& frame, const ScreenInfo& screen) override;
    void hide() override;
};

// Pointer events on a system without a backend: no button is ever down and nothing can be posted.
class NullMouseEvents final : public MouseEvents {
public:
    bool isButtonDown(MouseButton button) const override;
    bool post(const InputEvent& event) override;
    void warpPointer(InputEvent::Location location) override;
};

// The system's preferences on a system without a backend: every key is missing.
class NullSystemPreferences final : public SystemPreferences {
public:
    std::optional<double> number(std::string_view domain, std::string_view key) const override;
};

} // namespace quillmar
