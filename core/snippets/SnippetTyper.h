#pragma once

#include <chrono>
#include <memory>
#include <string_view>

#include "core/desktop/Keystrokes.h"
#include "core/desktop/Pasteboard.h"
#include "core/desktop/TextFocus.h"
#include "core/desktop/UserNotices.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/MainQueue.h"
#include "core/snippets/SnippetVariables.h"

namespace quillmar {

// Types an expansion into the front application through the pasteboard. Main thread only.
class SnippetTyper final {
public:
    // How long the pasted text stays on the pasteboard before what was there comes back: the application
    // reads it when it handles ⌘V, which may trail the keystroke.
    static constexpr Duration restoreDelay = std::chrono::milliseconds(500);

    static constexpr std::string_view cannotInsertMessage = "Click where the text should go, then paste";
    static constexpr std::string_view passwordBlocksMessage = "A password field is blocking typing";

    enum class Outcome { inserted, leftOnClipboard };

    SnippetTyper(MainQueue& mainQueue, Pasteboard& pasteboard, Keystrokes& keystrokes, TextFocus& focus, UserNotices& notices);
    ~SnippetTyper();

    SnippetTyper(const SnippetTyper&) = delete;
    SnippetTyper& operator=(const SnippetTyper&) = delete;

    // Puts the text on the pasteboard (marked as ours and transient, so no history records it), presses
    // ⌘V, then Left arrow once per character after the cursor mark. The earlier pasteboard contents come
    // back exactly (every type, every marker) after restoreDelay unless someone changed the pasteboard
    // meanwhile. When no
    // text field has the focus, or a password field has it, the text is left on the pasteboard and the user
    // is told "Click where the text should go, then paste".
    Outcome insert(const SnippetVariables::Expansion& expansion);

private:
    MainQueue& m_mainQueue;
    Pasteboard& m_pasteboard;
    Keystrokes& m_keystrokes;
    TextFocus& m_focus;
    UserNotices& m_notices;
    LifetimeGuard m_guard;
};

} // namespace quillmar
