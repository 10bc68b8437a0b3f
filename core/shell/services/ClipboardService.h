#pragma once

namespace quillmar {

// The clipboard history as the container drives it (core/clipboard's ClipboardStore).
class ClipboardService {
public:
    virtual ~ClipboardService() = default;

    // Whether links copied from now on lose their tracking parameters.
    virtual void setCleansLinks(bool on) = 0;
    // Starts watching the pasteboard; a second start changes nothing.
    virtual void start() = 0;
    // Stops the poll timer and removes the auto-clear observers.
    virtual void stop() = 0;
    // Writes pending history to disk now (at quit).
    virtual void flush() = 0;
};

} // namespace quillmar
