#include "core/snippets/TypedKeyBuffer.h"

#include <algorithm>

#include "core/base/Utf8.h"
#include "core/desktop/InputEvent.h"

namespace quillmar {

TypedKeyBuffer::Change TypedKeyBuffer::keyDown(std::uint32_t keyCode, std::uint64_t flags, std::string_view characters)
{
    if ((flags & (EventFlags::command | EventFlags::control)) != 0
        || std::find(resetKeyCodes.begin(), resetKeyCodes.end(), keyCode) != resetKeyCodes.end()) {
        m_text.clear();
        return Change::reset;
    }
    if (keyCode == deleteKeyCode) {
        if (m_text.empty())
            return Change::none;
        m_text.pop_back();
        return Change::removed;
    }
    auto produced = decodeUtf8(characters);
    std::erase_if(produced, [](char32_t codePoint) { return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0); });
    if (produced.empty())
        return Change::none;
    m_text += produced;
    if (m_text.size() > capacity)
        m_text.erase(0, m_text.size() - capacity);
    return Change::appended;
}

std::string TypedKeyBuffer::utf8() const
{
    return encodeUtf8(m_text);
}

} // namespace quillmar
