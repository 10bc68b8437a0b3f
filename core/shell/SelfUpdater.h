#pragma once

namespace quillmar {

// The application's own updater (port).
class SelfUpdater {
public:
    virtual ~SelfUpdater() = default;

    // Makes sure the updater exists, so that it can check on its own schedule.
    virtual void prepare() = 0;
    // A check the user can see: brings the application forward and asks for updates.
    virtual void checkForUpdatesVisibly() = 0;
};

} // namespace quillmar
