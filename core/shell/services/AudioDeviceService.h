#pragma once

namespace quillmar {

// The list of audio devices and its watcher.
class AudioDeviceService {
public:
    virtual ~AudioDeviceService() = default;

    virtual void stopWatching() = 0;
};

} // namespace quillmar
