#pragma once

namespace quillmar {

// The list of audio devices and its watcher. The base does nothing.
class AudioDeviceService {
public:
    virtual ~AudioDeviceService() = default;

    virtual void stopWatching() { }
};

} // namespace quillmar
