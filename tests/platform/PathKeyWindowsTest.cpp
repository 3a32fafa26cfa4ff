#include "platform/PathKey.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(PathKey, IsTheSameWhateverCaseAndSeparator)
{
    EXPECT_EQ(PathKey(u"C:\\Decks\\Übung Łódź.pptx"), PathKey(u"c:/decks/ÜBUNG łÓDŹ.PPTX"));
    EXPECT_EQ(PathKey(u""), u"");
}

TEST(PathKey, TellsOtherNamesApart)
{
    EXPECT_NE(PathKey(u"a.ppt"), PathKey(u"b.ppt"));
    EXPECT_NE(PathKey(u"Straße.ppt"), PathKey(u"Strasse.ppt"));
    EXPECT_NE(PathKey(u"e\u0301.ppt"), PathKey(u"é.ppt"));
}

}  // namespace tessarine
