#pragma once

namespace quillmar {

// The system monitor's alerts.
class MonitorAlertsService {
public:
    virtual ~MonitorAlertsService() = default;

    virtual void setEnabled(bool on) = 0;
};

} // namespace quillmar
