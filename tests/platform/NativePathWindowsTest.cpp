#include "platform/NativePath.h"

#include <gtest/gtest.h>

#include "platform/Failure.h"
#include "platform/FolderOf.h"

namespace tessarine
{

TEST(WindowsPaths, GetBackslashes)
{
    EXPECT_EQ(NativePath(u"C:/decks\\a b/ä.pptx"), L"C:\\decks\\a b\\ä.pptx");
    EXPECT_EQ(FolderOf(StringView(u"C:/decks\\a/b.pptx")), u"C:/decks\\a/");
    EXPECT_EQ(FileNameOf(StringView(u"decks/b.pptx")), u"b.pptx");
    EXPECT_EQ(FileNameOf(StringView(u"decks\\b.pptx")), u"b.pptx");
    EXPECT_EQ(WithoutTrailingSeparator(u"decks/"), u"decks");
}

TEST(WindowsPaths, GetTheFormWithoutALimitWhenTheyAreLong)
{
    const String name(240, u'n');
    const String path = u"C:/decks/" + name + u"/a.pptx";

    const NativeString native = NativePath(path);

    EXPECT_TRUE(native.starts_with(L"\\\\?\\C:\\decks\\nnn"));
    EXPECT_EQ(PathText(native), u"C:\\decks\\" + name + u"\\a.pptx");
    EXPECT_EQ(NativePath(PathText(native)), native);
    EXPECT_EQ(NativePath(u"\\\\server\\share\\" + name).substr(0, 21), L"\\\\?\\UNC\\server\\share\\");
    EXPECT_EQ(PathText(L"\\\\?\\UNC\\server\\share\\a"), u"\\\\server\\share\\a");
}

TEST(WindowsPaths, KeepHalvesOfPairsThatNamesMayHold)
{
    const String name = {u'a', 0xD83D, u'.', 0xDC80, u'b'};

    EXPECT_EQ(PathText(NativePath(name)), name);
}

TEST(WindowsPaths, HoldNoNul)
{
    const String path = {u'a', u'\0', u'b'};

    EXPECT_FALSE(NativePathIfValid(path));
    EXPECT_THROW(NativePath(path), Failure);
}

TEST(WindowsPaths, AreFullFromADriveOrAShareOn)
{
    EXPECT_TRUE(IsFullPath("C:\\a"));
    EXPECT_TRUE(IsFullPath("\\\\server\\share\\a"));
    EXPECT_FALSE(IsFullPath("C:a"));
    EXPECT_FALSE(IsFullPath("\\a"));
    EXPECT_FALSE(IsFullPath("a"));
}

}  // namespace tessarine
