#pragma once

namespace quillmar {

// The hold-to-quit interception of the quit shortcut.
class QuitProtectionService {
public:
    virtual ~QuitProtectionService() = default;

    // Registers or unregisters the interception.
    virtual void setEnabled(bool on) = 0;
};

} // namespace quillmar
