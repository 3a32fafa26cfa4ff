#include "settings/SettingsStore.h"

#include <gtest/gtest.h>

#include "platform/Failure.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

class SettingsStoreTest : public testing::Test
{
protected:
    UserFolders user_;
};

TEST_F(SettingsStoreTest, GivesTheEmptyTextForWhatIsNotThere)
{
    EXPECT_EQ(GetSetting(u"App", u"Section", u"Key"), u"");
}

TEST_F(SettingsStoreTest, KeepsApplicationsSectionsAndKeysApart)
{
    SaveSetting(u"App", u"Section", u"Key", u"1");
    SaveSetting(u"Other", u"Section", u"Key", u"2");
    SaveSetting(u"App", u"Elsewhere", u"Key", u"3");
    SaveSetting(u"App", u"Section", u"Other", u"4");

    EXPECT_EQ(GetSetting(u"App", u"Section", u"Key"), u"1");
    EXPECT_EQ(GetSetting(u"Other", u"Section", u"Key"), u"2");
    EXPECT_EQ(GetSetting(u"App", u"Elsewhere", u"Key"), u"3");
    EXPECT_EQ(GetSetting(u"App", u"Section", u"Other"), u"4");
}

TEST_F(SettingsStoreTest, ReplacesAValue)
{
    SaveSetting(u"App", u"Section", u"Key", u"old");

    SaveSetting(u"App", u"Section", u"Key", u"new");

    EXPECT_EQ(GetSetting(u"App", u"Section", u"Key"), u"new");
}

class SettingsStoreRoundTrip : public SettingsStoreTest, public testing::WithParamInterface<String>
{
};

TEST_P(SettingsStoreRoundTrip, KeepsTheText)
{
    SaveSetting(u"App", u"Section", u"Key", GetParam());

    EXPECT_EQ(GetSetting(u"App", u"Section", u"Key"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Texts, SettingsStoreRoundTrip,
                         testing::Values(u"C:\\Jobs\\a b.tsq", u"/with, comma; and = sign", u"@file(1)", u"\"quoted\"",
                                         u" blanks ", u"/Übung/отчёт/報告.tsq", u"%20 100%", u"two\nlines",
                                         u"\U0001F600"));

TEST_F(SettingsStoreTest, RaisesWhenTheStoreCannotBeWritten)
{
    user_.BlockSettings();

    try {
        SaveSetting(u"App", u"Section", u"Key", u"value");
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 70);
    }
}

}  // namespace
}  // namespace tessarine
