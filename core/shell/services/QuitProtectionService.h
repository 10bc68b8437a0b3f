#pragma once

namespace quillmar {

// The hold-to-quit interception of the quit shortcut. The base does nothing.
class QuitProtectionService {
public:
    virtual ~QuitProtectionService() = default;

    // Registers or unregisters the interception.
    virtual void setEnabled(bool) { }
};

} // namespace quillmar
