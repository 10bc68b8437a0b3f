#include <gtest/gtest.h>

#include "core/desktop/InputEvent.h"
#include "core/snippets/TypedKeyBuffer.h"

namespace quillmar {
namespace {

constexpr std::uint32_t letterKey = 0;

void type(TypedKeyBuffer& buffer, std::string_view text)
{
    for (char character : text)
        buffer.keyDown(letterKey, 0, std::string(1, character));
}

TEST(TypedKeyBuffer, KeepsTheLastSixtyFourCharacters)
{
    TypedKeyBuffer buffer;
    std::string typed;
    for (int index = 0; index < 64; ++index)
        typed += static_cast<char>('A' + index % 26);
    type(buffer, typed);
    EXPECT_EQ(buffer.utf8(), typed);
    type(buffer, "!");
    EXPECT_EQ(buffer.text().size(), 64u);
    EXPECT_EQ(buffer.utf8(), typed.substr(1) + "!") << "the 65th character drops the first";
}

TEST(TypedKeyBuffer, DeleteRemovesOneCharacter)
{
    TypedKeyBuffer buffer;
    type(buffer, "ab");
    buffer.keyDown(letterKey, 0, "é");
    EXPECT_EQ(buffer.keyDown(TypedKeyBuffer::deleteKeyCode, 0, ""), TypedKeyBuffer::Change::removed);
    EXPECT_EQ(buffer.utf8(), "ab");
    buffer.keyDown(TypedKeyBuffer::deleteKeyCode, 0, "");
    buffer.keyDown(TypedKeyBuffer::deleteKeyCode, 0, "");
    EXPECT_EQ(buffer.keyDown(TypedKeyBuffer::deleteKeyCode, 0, ""), TypedKeyBuffer::Change::none);
    EXPECT_EQ(buffer.utf8(), "");
}

struct ResetRow {
    const char* name;
    std::uint32_t keyCode;
    std::uint64_t flags;
    TypedKeyBuffer::Change change;
};

class BufferResets : public testing::TestWithParam<ResetRow> { };

TEST_P(BufferResets, EmptyTheBufferOrNot)
{
    TypedKeyBuffer buffer;
    type(buffer, ";si");
    EXPECT_EQ(buffer.keyDown(GetParam().keyCode, GetParam().flags, "g"), GetParam().change);
    EXPECT_EQ(buffer.utf8().empty(), GetParam().change == TypedKeyBuffer::Change::reset);
}

INSTANTIATE_TEST_SUITE_P(Keys, BufferResets,
    testing::Values(
        ResetRow { "Return", 36, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "KeypadEnter", 76, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "Tab", 48, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "Escape", 53, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "LeftArrow", 123, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "UpArrow", 126, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "Home", 115, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "ForwardDelete", 117, 0, TypedKeyBuffer::Change::reset },
        ResetRow { "CommandShortcut", 9, EventFlags::command, TypedKeyBuffer::Change::reset },
        ResetRow { "ControlShortcut", 14, EventFlags::control, TypedKeyBuffer::Change::reset },
        ResetRow { "ShiftedLetterTypes", 5, EventFlags::shift, TypedKeyBuffer::Change::appended },
        ResetRow { "OptionLetterTypes", 5, EventFlags::option, TypedKeyBuffer::Change::appended }),
    [](const testing::TestParamInfo<ResetRow>& row) { return row.param.name; });

TEST(TypedKeyBuffer, KeysThatTypeNothingAreIgnored)
{
    TypedKeyBuffer buffer;
    type(buffer, "ab");
    EXPECT_EQ(buffer.keyDown(letterKey, 0, ""), TypedKeyBuffer::Change::none);
    EXPECT_EQ(buffer.keyDown(letterKey, 0, "\x1b\x7f"), TypedKeyBuffer::Change::none) << "control characters";
    EXPECT_EQ(buffer.utf8(), "ab");
    EXPECT_EQ(buffer.keyDown(letterKey, 0, "ü"), TypedKeyBuffer::Change::appended);
    EXPECT_EQ(buffer.utf8(), "abü");
}

} // namespace
} // namespace quillmar
