#pragma once

namespace quillmar {

// Whether the application starts at login, through the platform's login-item service.
class LoginItemService {
public:
    virtual ~LoginItemService() = default;

    virtual bool launchesAtLogin() const = 0;
    virtual void setLaunchesAtLogin(bool on) = 0;
};

} // namespace quillmar
