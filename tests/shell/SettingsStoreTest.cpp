#include "settings/SettingsStore.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/Failure.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{
namespace
{

class SettingsStoreTest : public testing::Test
{
protected:
    SettingsStoreTest() { setenv("XDG_CONFIG_HOME", ToUtf8(home_.Path()).c_str(), 1); }
    ~SettingsStoreTest() override { unsetenv("XDG_CONFIG_HOME"); }

    TemporaryFolder home_;
};

TEST_F(SettingsStoreTest, GivesBackWhatWasSaved)
{
    const String path = u"/Jobs/Übersicht, \"a\" = 東京 😀 %41.tsq";

    SaveSetting(u"Tessarine", u"MRUFiles", u"0", path);

    EXPECT_EQ(GetSetting(u"Tessarine", u"MRUFiles", u"0"), path);
}

TEST_F(SettingsStoreTest, IsEmptyWithoutAnEntry)
{
    SaveSetting(u"Tessarine", u"MRUFiles", u"0", u"a");

    EXPECT_EQ(GetSetting(u"Tessarine", u"MRUFiles", u"1"), u"");
    EXPECT_EQ(GetSetting(u"Tessarine", u"INIFILE", u"0"), u"");
    EXPECT_EQ(GetSetting(u"tessarine", u"MRUFiles", u"0"), u"");
}

TEST_F(SettingsStoreTest, RaisesWhenTheStoreCannotBeWritten)
{
    home_.Write(u"Tessarine", "a file in the way");

    EXPECT_THROW(SaveSetting(u"Tessarine", u"MRUFiles", u"0", u"a"), Failure);
}

}  // namespace
}  // namespace tessarine
