#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillmar {

// An application as the system names it.
struct AppIdentity {
    std::string bundleID;
    std::string name;

    bool operator==(const AppIdentity&) const = default;
};

// Which application is in front, and which came to the front lately. Main thread only.
class FrontApplications {
public:
    virtual ~FrontApplications() = default;

    // The frontmost application now; none when the system cannot tell.
    virtual std::optional<AppIdentity> frontApplication() const = 0;

    // The applications activated since the previous call, oldest first; the list is emptied.
    virtual std::vector<AppIdentity> takeActivations() = 0;
};

} // namespace quillmar
