#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/shell/SleepInhibitor.h"
#include "platform/linux/DBusBuses.h"

namespace quillmar {

// Holds off idle sleep over D-Bus: first the session's screen saver (org.freedesktop.ScreenSaver.Inhibit, ended
// by UnInhibit with its cookie), which desktops honour for idle sleep as well; without one, logind's
// Inhibit("idle:sleep", "Quillmar", reason, "block") on the system bus, whose hold lasts as long as the file
// descriptor it returns stays open. The calls are synchronous with a short time-out.
class DBusSleepInhibitor final : public SleepInhibitor {
public:
    explicit DBusSleepInhibitor(DBusBuses buses);
    // Releases a hold still taken.
    ~DBusSleepInhibitor() override;

    DBusSleepInhibitor(const DBusSleepInhibitor&) = delete;
    DBusSleepInhibitor& operator=(const DBusSleepInhibitor&) = delete;

    Result<void> inhibit(std::string_view reason) override;
    void release() override;
    bool isInhibiting() const override;

private:
    Result<void> inhibitScreenSaver(const std::string& reason);
    Result<void> inhibitLogind(const std::string& reason);

    DBusBuses m_buses;
    // Screen savers end a hold when its connection closes, so the connection stays open while holding.
    ConnectionHandle m_screenSaverConnection;
    std::optional<std::uint32_t> m_cookie;
    int m_logindHold = -1;
};

} // namespace quillmar
