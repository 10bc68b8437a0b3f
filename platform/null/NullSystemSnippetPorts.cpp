#include "core/snippets/SystemSnippetPorts.h"
#include "platform/null/NullSnippetPorts.h"

namespace quillmar {

SystemSnippetPorts makeSystemSnippetPorts()
{
    SystemSnippetPorts ports;
    ports.keyboard = std::make_unique<NullKeyboardLayout>();
    ports.focus = std::make_unique<NullTextFocus>();
    return ports;
}

} // namespace quillmar
