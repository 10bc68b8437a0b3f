#pragma once

namespace quillmar {

// The application's own updater (port). On systems without one the base does nothing.
class SelfUpdater {
public:
    virtual ~SelfUpdater() = default;

    // Makes sure the updater exists, so that it can check on its own schedule.
    virtual void prepare() { }
    // A check the user can see: brings the application forward and asks for updates.
    virtual void checkForUpdatesVisibly() { }
};

} // namespace quillmar
