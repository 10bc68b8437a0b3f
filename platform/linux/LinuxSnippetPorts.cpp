#include "core/base/Diagnostics.h"
#include "core/snippets/SystemSnippetPorts.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11KeyboardLayout.h"
#include "platform/null/NullSnippetPorts.h"

namespace quillmar {

namespace {

std::unique_ptr<KeyboardLayout> makeKeyboardLayout()
{
    auto connection = X11Connection::shared("Snippets");
    if (!connection) {
        diagnostic("snippets: {} ({})", connection.error().message, connection.error().context);
        return std::make_unique<NullKeyboardLayout>();
    }
    auto layout = X11KeyboardLayout::create(std::move(connection).value());
    if (!layout) {
        diagnostic("snippets: {} ({})", layout.error().message, layout.error().context);
        return std::make_unique<NullKeyboardLayout>();
    }
    return std::move(layout).value();
}

} // namespace

SystemSnippetPorts makeSystemSnippetPorts()
{
    // What typed keys produce comes from the X keyboard layout; the focused field is not known yet on Linux.
    SystemSnippetPorts ports;
    ports.keyboard = makeKeyboardLayout();
    ports.focus = std::make_unique<NullTextFocus>();
    return ports;
}

} // namespace quillmar
