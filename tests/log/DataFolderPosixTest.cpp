#include <gmock/gmock.h>

#include "files/Files.h"
#include "log/ErrorLog.h"
#include "platform/SpecialFolders.h"
#include "support/ErrorLogRecorder.h"
#include "support/MessageRecorder.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

using testing::IsEmpty;

class DataFolder : public testing::Test
{
protected:
    const ErrorLogRecorder log_;  // puts ApplicationDataFolder back at the end
    const MessageRecorder messages_;
    const TemporaryFolder home_;
};

TEST_F(DataFolder, IsMadeTwoLevelsBelowTheDataHome)
{
    const ScopedEnvironment dataHome("XDG_DATA_HOME", ToUtf8(home_.PathOf(u"new/data")));

    EXPECT_TRUE(GetFileStorageFolder());

    EXPECT_EQ(ApplicationDataFolder, home_.PathOf(u"new/data/Tessarine/Tessarine"));
    EXPECT_TRUE(FolderExists(ApplicationDataFolder));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(DataFolder, IsFoundASecondTime)
{
    const ScopedEnvironment dataHome("XDG_DATA_HOME", ToUtf8(home_.Path()));
    ASSERT_TRUE(GetFileStorageFolder());
    home_.Write(u"Tessarine/Tessarine/Default.tsq", "job");

    EXPECT_TRUE(GetFileStorageFolder());

    EXPECT_EQ(ContentOf(home_.PathOf(u"Tessarine/Tessarine/Default.tsq")), "job");
}

TEST_F(DataFolder, LiesBelowTheHomeFolderWithoutADataHome)
{
    const ScopedEnvironment dataHome("XDG_DATA_HOME", std::nullopt);
    const ScopedEnvironment home("HOME", ToUtf8(home_.Path()) + "/");

    EXPECT_TRUE(GetFileStorageFolder());

    EXPECT_EQ(ApplicationDataFolder, home_.PathOf(u".local/share/Tessarine/Tessarine"));
}

TEST_F(DataFolder, IgnoresARelativeDataHome)
{
    const ScopedEnvironment dataHome("XDG_DATA_HOME", "data");
    const ScopedEnvironment home("HOME", ToUtf8(home_.Path()));

    EXPECT_TRUE(GetFileStorageFolder());

    EXPECT_EQ(ApplicationDataFolder, home_.PathOf(u".local/share/Tessarine/Tessarine"));
}

TEST_F(DataFolder, ThatCannotBeMadeShowsNoMessage)
{
    const String file = home_.Write(u"file");
    const ScopedEnvironment dataHome("XDG_DATA_HOME", ToUtf8(file));

    EXPECT_FALSE(GetFileStorageFolder());

    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(DataFolder, WithoutAPlaceForItIsTold)
{
    const SpecialFoldersPort before = SetSpecialFolders([](std::int32_t) { return String(); });

    EXPECT_FALSE(GetFileStorageFolder());

    SetSpecialFolders(before);
    EXPECT_THAT(messages_.Messages(),
                testing::ElementsAre(MessageRecorder::Message{u"Unable to get file storage folder path",
                                                              MessageIcon::Critical, MessageButtons::Ok}));
}

TEST_F(DataFolder, MayHaveOddBytesInItsPath)
{
    const std::string odd = ToUtf8(home_.Path()) + "/my 😀 \xE9";
    const ScopedEnvironment dataHome("XDG_DATA_HOME", odd);

    EXPECT_TRUE(GetFileStorageFolder());
    WriteErrorLog(u"line");

    EXPECT_TRUE(FileExists(FromUtf8(odd + "/Tessarine/Tessarine/Errors.Log")));
}

TEST_F(DataFolder, IsTheOnlySpecialFolderOfThisSystem)
{
    EXPECT_EQ(GetSpecialFolderPath(5), u"");
    EXPECT_NE(GetSpecialFolderPath(ApplicationDataFolderNumber), u"");
}

}  // namespace tessarine
