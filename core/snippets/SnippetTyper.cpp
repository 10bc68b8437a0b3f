#include "core/snippets/SnippetTyper.h"

#include "core/clipboard/PasteboardSnapshot.h"
#include "core/eventtap/InputEvent.h"
#include "core/snippets/Graphemes.h"

namespace quillmar {

namespace {

PasteboardWriting restoring(const PasteboardReading& reading)
{
    auto snapshot = PasteboardSnapshot::from(reading, {});
    PasteboardWriting writing;
    writing.text = snapshot.text;
    writing.filePaths = snapshot.filePaths;
    writing.image = snapshot.image;
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
    , m_alive(std::make_shared<const bool>(true))
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
    m_keystrokes.postKey(KeyCode::v, EventFlags::command);
    auto total = graphemeCount(expansion.text);
    for (auto left = expansion.cursor; left < total; ++left)
        m_keystrokes.postKey(KeyCode::leftArrow, 0);

    std::weak_ptr<const bool> alive = m_alive;
    m_mainQueue.postAfter(restoreDelay, [this, alive, ours, previous = std::move(*previous)] {
        if (alive.expired() || m_pasteboard.changeCount() != ours)
            return;
        if (previous.types.empty())
            m_pasteboard.clear();
        else
            m_pasteboard.write(restoring(previous));
    });
    return Outcome::inserted;
}

} // namespace quillmar
