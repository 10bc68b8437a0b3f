#pragma once

namespace quillmar {

// Whether the application starts at login, through the platform's login-item service.
// The base is never set to launch at login.
class LoginItemService {
public:
    virtual ~LoginItemService() = default;

    virtual bool launchesAtLogin() const { return false; }
    virtual void setLaunchesAtLogin(bool) { }
};

} // namespace quillmar
