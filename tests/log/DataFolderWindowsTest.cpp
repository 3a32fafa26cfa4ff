#include <gmock/gmock.h>

#include "files/Files.h"
#include "log/ErrorLog.h"
#include "platform/SpecialFolders.h"
#include "support/ErrorLogRecorder.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

/// Has the folder for application data be another one until the end of the scope.
class DataIn
{
public:
    explicit DataIn(const String& folder) : before_(SetSpecialFolders([folder](std::int32_t) { return folder; })) {}
    ~DataIn() { SetSpecialFolders(before_); }
    DataIn(const DataIn&) = delete;
    DataIn& operator=(const DataIn&) = delete;

private:
    SpecialFoldersPort before_;
};

class DataFolderOfWindows : public testing::Test
{
protected:
    const ErrorLogRecorder log_;  // puts ApplicationDataFolder back at the end
    const MessageRecorder messages_;
    const TemporaryFolder home_;
};

}  // namespace

TEST_F(DataFolderOfWindows, IsMadeTwoLevelsBelowASpecialFolder)
{
    const String special = home_.PathOf(u"Приложения/данные");
    const DataIn data(special);

    EXPECT_TRUE(GetFileStorageFolder());

    EXPECT_EQ(ApplicationDataFolder, special + u"\\Tessarine\\Tessarine");
    EXPECT_TRUE(FolderExists(ApplicationDataFolder));
    EXPECT_TRUE(GetFileStorageFolder());
    EXPECT_THAT(messages_.Messages(), testing::IsEmpty());
}

TEST_F(DataFolderOfWindows, ThatCannotBeMadeShowsNoMessage)
{
    const DataIn data(home_.Write(u"file"));

    EXPECT_FALSE(GetFileStorageFolder());

    EXPECT_THAT(messages_.Messages(), testing::IsEmpty());
}

TEST(SpecialFoldersOfWindows, AreThoseOfTheShell)
{
    constexpr std::int32_t fonts = 20;
    constexpr std::int32_t ofNoNumber = 1000;

    EXPECT_TRUE(FolderExists(GetSpecialFolderPath(ApplicationDataFolderNumber)));
    EXPECT_FALSE(GetSpecialFolderPath(ApplicationDataFolderNumber).ends_with(u'\\'));
    EXPECT_NE(GetSpecialFolderPath(fonts), GetSpecialFolderPath(ApplicationDataFolderNumber));
    EXPECT_EQ(GetSpecialFolderPath(ofNoNumber), u"");
}

}  // namespace tessarine
