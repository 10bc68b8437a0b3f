#include "core/commandbar/CharacterFolder.h"

#include <array>
#include <cassert>
#include <mutex>

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include "core/base/SearchFolding.h"

// ICU's UTF-8 macros mix signed and unsigned arithmetic inside their expansion.
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"

namespace quillmar {

namespace {


// Marks between words in titles ("Safari - Start Page", "my_notes.txt", "Tools/Build"). The apostrophe is
// left out: it sits inside words ("Don't").
constexpr std::array<char32_t, 28> separators {
    U'-', U'_', U'.', U'/', U'\\', U':', U',', U';', U'|', U'+', U'&', U'(', U')', U'[',
    U']', U'{', U'}', U'<', U'>', U'"', U'#', U'@', U'=', U'*', U'~',
    U'\u2013', U'\u2014', U'\u00B7', // en dash, em dash, middle dot
};

bool isAsciiWhitespace(unsigned char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

CharacterClass asciiClass(unsigned char byte)
{
    if (isAsciiWhitespace(byte) || CharacterFolder::isSeparator(byte))
        return CharacterClass::wordBreak;
    if (byte >= 'a' && byte <= 'z')
        return CharacterClass::lowercase;
    if (byte >= 'A' && byte <= 'Z')
        return CharacterClass::uppercase;
    return CharacterClass::other;
}

FoldedKey asciiKey(unsigned char byte)
{
    return byte >= 'A' && byte <= 'Z' ? FoldedKey { byte } + ('a' - 'A') : FoldedKey { byte };
}

// Numbers for characters made of several code points (emoji sequences, flags, letters with marks that
// folding keeps), handed out on first sight. Folding is rare next to matching, so one lock will do.
FoldedKey sequenceKey(std::u32string_view codePoints)
{
    static std::mutex mutex;
    static std::unordered_map<std::u32string, FoldedKey> keys;
    std::lock_guard lock(mutex);
    auto [found, inserted] = keys.try_emplace(std::u32string(codePoints), 0);
    if (inserted)
        found->second = static_cast<FoldedKey>(0x110000 + keys.size() - 1);
    return found->second;
}

FoldedKey keyOf(std::u32string_view folded)
{
    return folded.size() == 1 ? FoldedKey { folded[0] } : sequenceKey(folded);
}

CharacterClass unicodeClass(char32_t codePoint)
{
    auto value = static_cast<UChar32>(codePoint);
    if (u_isUWhiteSpace(value) || CharacterFolder::isSeparator(codePoint))
        return CharacterClass::wordBreak;
    if (u_isULowercase(value))
        return CharacterClass::lowercase;
    if (u_isUUppercase(value))
        return CharacterClass::uppercase;
    return CharacterClass::other;
}

void appendUtf32(const icu::UnicodeString& text, std::u32string& out)
{
    for (int32_t index = 0; index < text.length();) {
        UChar32 codePoint = text.char32At(index);
        out.push_back(static_cast<char32_t>(codePoint));
        index += U16_LENGTH(codePoint);
    }
}

// Closes a UText opened on the stack.
class UTextCloser final {
public:
    explicit UTextCloser(UText* text) : m_text(text) { }
    ~UTextCloser() { utext_close(m_text); }
    UTextCloser(const UTextCloser&) = delete;
    UTextCloser& operator=(const UTextCloser&) = delete;

private:
    UText* m_text;
};

} // namespace

CharacterFolder::CharacterFolder()
{
    UErrorCode status = U_ZERO_ERROR;
    m_breaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    m_foldedBreaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    // These come from ICU's built-in data; without it nothing in the suite could work.
    assert(U_SUCCESS(status) && m_breaks && m_foldedBreaks);
}

CharacterFolder::~CharacterFolder() = default;

bool CharacterFolder::isSeparator(char32_t codePoint)
{
    for (char32_t separator : separators) {
        if (separator == codePoint)
            return true;
    }
    return false;
}

std::span<const CharacterFolder::Character> CharacterFolder::split(std::string_view text)
{
    m_characters.clear();
    bool ascii = true;
    for (char byte : text) {
        if (static_cast<unsigned char>(byte) >= 0x80) {
            ascii = false;
            break;
        }
    }
    if (ascii)
        splitAscii(text);
    else
        splitUnicode(text);
    return m_characters;
}

void CharacterFolder::splitAscii(std::string_view text)
{
    auto size = static_cast<std::uint32_t>(text.size());
    for (std::uint32_t index = 0; index < size;) {
        auto byte = static_cast<unsigned char>(text[index]);
        if (byte == '\r' && index + 1 < size && text[index + 1] == '\n') {
            static const FoldedKey lineBreak = sequenceKey(U"\r\n");
            m_characters.push_back({ index, index + 2, lineBreak, CharacterClass::wordBreak, true });
            index += 2;
            continue;
        }
        m_characters.push_back({ index, index + 1, asciiKey(byte), asciiClass(byte), isAsciiWhitespace(byte) });
        ++index;
    }
}

void CharacterFolder::splitUnicode(std::string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    UText utext = UTEXT_INITIALIZER;
    utext_openUTF8(&utext, text.data(), static_cast<int64_t>(text.size()), &status);
    UTextCloser closer(&utext);
    m_breaks->setText(&utext, status);
    if (U_FAILURE(status))
        return;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::int32_t begin = m_breaks->first();
    for (std::int32_t end = m_breaks->next(); end != icu::BreakIterator::DONE; begin = end, end = m_breaks->next()) {
        m_codePoints.clear();
        for (std::int32_t offset = begin; offset < end;) {
            UChar32 codePoint = 0;
            U8_NEXT(bytes, offset, end, codePoint);
            m_codePoints.push_back(codePoint < 0 ? U'\uFFFD' : static_cast<char32_t>(codePoint));
        }
        char32_t first = m_codePoints.empty() ? U'\uFFFD' : m_codePoints.front();
        FoldedKey key = 0;
        if (m_codePoints.size() == 1 && first < 0x80) {
            key = asciiKey(static_cast<unsigned char>(first));
        } else if (m_codePoints.size() == 1) {
            auto [found, inserted] = m_singleKeys.try_emplace(first, 0);
            if (inserted)
                found->second = foldCodePoints(m_codePoints);
            key = found->second;
        } else {
            key = foldCodePoints(m_codePoints);
        }
        bool whitespace = u_isUWhiteSpace(static_cast<UChar32>(first));
        m_characters.push_back({ static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), key,
            unicodeClass(first), whitespace });
    }
}

FoldedKey CharacterFolder::foldCodePoints(std::u32string_view codePoints)
{
    m_folded.clear();
    if (codePoints == U"\r\n") {
        m_folded = codePoints;
        return sequenceKey(codePoints);
    }
    if (codePoints.size() == 1 && codePoints[0] < 0x80) {
        auto key = asciiKey(static_cast<unsigned char>(codePoints[0]));
        m_folded.push_back(static_cast<char32_t>(key));
        return key;
    }
    m_folded = foldedForSearch(codePoints);
    if (m_folded.empty()) {
        // A lone mark folds to nothing: it stays as written so that it can still be typed and matched.
        m_folded = codePoints;
        return keyOf(m_folded);
    }
    if (m_folded.size() == 1)
        return keyOf(m_folded);
    // Folding may spell one character as several ("ß" as "ss"); the first stands for it.
    auto folded = icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(m_folded.data()),
        static_cast<int32_t>(m_folded.size()));
    m_folded.clear();
    m_foldedBreaks->setText(folded);
    std::int32_t end = m_foldedBreaks->next();
    if (end == icu::BreakIterator::DONE)
        end = folded.length();
    appendUtf32(folded.tempSubString(0, end), m_folded);
    return keyOf(m_folded);
}

std::string CharacterFolder::foldedCharacter(std::string_view text)
{
    auto characters = split(text);
    if (characters.empty())
        return {};
    auto first = characters.front();
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::u32string codePoints;
    for (auto offset = static_cast<std::int32_t>(first.begin); offset < static_cast<std::int32_t>(first.end);) {
        UChar32 codePoint = 0;
        U8_NEXT(bytes, offset, static_cast<std::int32_t>(first.end), codePoint);
        codePoints.push_back(codePoint < 0 ? U'\uFFFD' : static_cast<char32_t>(codePoint));
    }
    foldCodePoints(codePoints);
    std::string utf8;
    icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(m_folded.data()), static_cast<int32_t>(m_folded.size()))
        .toUTF8String(utf8);
    return utf8;
}

std::string CharacterFolder::foldLoosely(std::string_view text)
{
    return foldedLoosely(text);
}

} // namespace quillmar
