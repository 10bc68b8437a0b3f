#pragma once

namespace quillmar {

// The system monitor's alerts. The base does nothing.
class MonitorAlertsService {
public:
    virtual ~MonitorAlertsService() = default;

    virtual void setEnabled(bool) { }
};

} // namespace quillmar
