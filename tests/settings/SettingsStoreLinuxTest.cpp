#include "settings/SettingsStore.h"

#include <gtest/gtest.h>

#include <QFile>

#include "i18n/QtText.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

class SettingsFileTest : public testing::Test
{
protected:
    UserFolders user_;
};

TEST_F(SettingsFileTest, IsNotMadeByReading)
{
    GetSetting(u"App", u"Section", u"Key");

    EXPECT_FALSE(QFile::exists(ToQt(user_.configuration.PathOf(u"Tessarine"))));
}

TEST_F(SettingsFileTest, StandsInAFileOfTheApplicationAtOnce)
{
    SaveSetting(u"App", u"MRUFiles", u"0", u"/jobs/report.tsq");

    EXPECT_EQ(ContentOf(user_.configuration.PathOf(u"Tessarine/App.ini")), "[MRUFiles]\n0=/jobs/report.tsq\n");
}

TEST_F(SettingsFileTest, SeesWhatAnotherProcessWrote)
{
    SaveSetting(u"App", u"Section", u"0", u"mine");

    user_.configuration.Write(u"Tessarine/App.ini", "[Section]\n0=theirs, and longer\n");

    EXPECT_EQ(GetSetting(u"App", u"Section", u"1"), u"");
}

}  // namespace
}  // namespace tessarine
