#include "core/snippets/SnippetTyper.h"

#include "core/desktop/InputEvent.h"
#include "core/desktop/PasteboardTypes.h"
#include "core/snippets/Graphemes.h"

namespace quillmar {

namespace {

// Every type with every marker, as it was: a concealed password stays concealed to other clipboard
// tools, rich text keeps its formats. Marked as ours too, so that the history does not take it for a
// new copy.
PasteboardWriting restoring(PasteboardReading reading)
{
    PasteboardWriting writing;
    writing.contents = std::move(reading);
    writing.markers = { std::string(PasteboardTypes::own) };
    return writing;
}

} // namespace

SnippetTyper::SnippetTyper(MainQueue& mainQueue, Pasteboard& pasteboard, Keystrokes& keystrokes, TextFocus& focus,
    UserNotices& notices)
    : m_mainQueue(mainQueue)
    , m_pasteboard(pasteboard)
    , m_keystrokes(keystrokes)
    , m_focus(focus)
    , m_notices(notices)
{
}

SnippetTyper::~SnippetTyper() = default;

SnippetTyper::Outcome SnippetTyper::insert(const SnippetVariables::Expansion& expansion)
{
    m_mainQueue.assertMainThread("SnippetTyper");
    auto field = m_focus.focusedField();
    auto previous = field == FocusedField::editableText ? std::optional(m_pasteboard.read()) : std::nullopt;

    PasteboardWriting writing;
    writing.text = expansion.text;
    writing.markers = { std::string(PasteboardTypes::own), std::string(PasteboardTypes::transient[0]) };
    if (field != FocusedField::editableText) {
        m_pasteboard.write(writing);
        m_notices.show(cannotInsertMessage, field == FocusedField::secureText ? passwordBlocksMessage : "");
        return Outcome::leftOnClipboard;
    }
    m_pasteboard.write(writing);
    auto ours = m_pasteboard.changeCount();
    m_keystrokes.postPaste();
    auto total = graphemeCount(expansion.text);
    for (auto left = expansion.cursor; left < total; ++left)
        m_keystrokes.postKey(KeyCode::leftArrow, 0);

    m_guard.postAfter(m_mainQueue, restoreDelay, [this, ours, previous = std::move(*previous)] {
        if (m_pasteboard.changeCount() != ours)
            return;
        if (previous.types.empty())
            m_pasteboard.clear();
        else
            m_pasteboard.write(restoring(previous));
    });
    return Outcome::inserted;
}

} // namespace quillmar
