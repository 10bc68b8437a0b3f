#pragma once

#include <memory>

#include "core/desktop/KeyboardLayout.h"
#include "core/desktop/TextFocus.h"

namespace quillmar {

// The ports of text expansion on the system being built, owned together. The platform layer defines it once per
// system in quillmar_snippets_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemSnippetPorts {
    std::unique_ptr<KeyboardLayout> keyboard;
    std::unique_ptr<TextFocus> focus;
};

SystemSnippetPorts makeSystemSnippetPorts();

} // namespace quillmar
