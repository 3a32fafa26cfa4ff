#include "platform/VisibleText.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

std::string Visible(StringView text)
{
    return ToUtf8(VisibleText(text));
}

TEST(VisibleText, EscapesControlCharactersBelowBlankAndDel)
{
    EXPECT_EQ(Visible(u"a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(Visible(StringView(u"\0\a\x1B[31m\x1F\x7F", 9)), "\\x00\\x07\\x1B[31m\\x1F\\x7F");
}

TEST(VisibleText, EscapesControlCharactersFrom80To9F)
{
    EXPECT_EQ(Visible(u"\u0080\u009B\u009F\u00A0"), "\\u0080\\u009B\\u009F\u00A0");
}

TEST(VisibleText, EscapesWhatTurnsTheOrderOfLetters)
{
    EXPECT_EQ(Visible(u"a\u202Excod.pptx"), "a\\u202Excod.pptx");
    EXPECT_EQ(Visible(u"\u202A\u202D\u2066\u2069\u200E\u200F\u061C"),
              "\\u202A\\u202D\\u2066\\u2069\\u200E\\u200F\\u061C");
}

TEST(VisibleText, EscapesLineAndParagraphSeparators)
{
    EXPECT_EQ(Visible(u"\u2027\u2028\u2029\u202F"), "\u2027\\u2028\\u2029\u202F");
}

TEST(VisibleText, EscapesForeignBytesThatMayBeControls)
{
    EXPECT_EQ(Visible(FromUtf8("a\x9B"
                               "31m\x80\x9F\xA0\xE9")),
              "a\\x9B31m\\x80\\x9F\xA0\xE9");
}

TEST(VisibleText, LeavesLettersOfAllPlanesAlone)
{
    // Ends in the unit DC9B, which is no byte of a name here.
    const String letter = u"\U0002F89B";

    EXPECT_EQ(Visible(u"Zürich שלום 中文 \\n " + letter), "Zürich שלום 中文 \\n " + ToUtf8(letter));
}

TEST(VisibleText, ChangesNothingASecondTime)
{
    const String once = VisibleText(u"a\n\u009B\u202E");

    EXPECT_EQ(VisibleText(once), once);
}

}  // namespace
}  // namespace tessarine
