#pragma once

namespace quillmar {

// The clipboard history as the container drives it. Until the clipboard subsystem provides the real
// store, this base does nothing.
class ClipboardService {
public:
    virtual ~ClipboardService() = default;

    // Whether links copied from now on lose their tracking parameters.
    virtual void setCleansLinks(bool) { }
    // Starts watching the pasteboard; a second start changes nothing.
    virtual void start() { }
    // Stops the poll timer and removes the auto-clear observers.
    virtual void stop() { }
    // Writes pending history to disk now (at quit).
    virtual void flush() { }
};

} // namespace quillmar
