#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "core/desktop/UserNotices.h"
#include "platform/linux/DBusBuses.h"
#include "platform/linux/GMainLoopThread.h"

namespace quillmar {

// Notices as desktop notifications: org.freedesktop.Notifications.Notify on the session bus, from "Quillmar",
// with the message as summary and the detail as body, gone after a few seconds. The calls go out on a thread
// of the backend's own, so a slow notification server never holds up the main thread. Without a session bus
// or a notification server the notice is lost with a developer diagnostic: a toast is never worth an error.
class DBusUserNotices final : public UserNotices {
public:
    // What askForAccessibility does; the front end sets it to show its request. `reason` is a full sentence.
    using AccessibilityRequest = std::function<void(std::string_view reason)>;

    explicit DBusUserNotices(DBusBuses buses);
    ~DBusUserNotices() override;

    void show(std::string_view message, std::string_view detail) override;

    // X11 has no permission to grant: the request goes to the front end, by default as a notice of the reason.
    void askForAccessibility(std::string_view reason) override;

    // Replaces what askForAccessibility does; an empty function restores the notice. Main thread.
    void setAccessibilityRequest(AccessibilityRequest request);

private:
    struct Sender;

    AccessibilityRequest m_accessibilityRequest;
    std::unique_ptr<Sender> m_sender;
    GMainLoopThread m_thread;
};

} // namespace quillmar
