#include "saving/RunJournal.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "files/Files.h"
#include "log/ErrorLog.h"
#include "platform/WindowsHeaders.h"
#include "support/ErrorLogRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class JournalOnWindows : public testing::Test
{
protected:
    JournalOnWindows()
    {
        SetFileAttributesW(NativePath(path_).c_str(), FILE_ATTRIBUTE_READONLY);
        attributes_ = GetAttributes(path_);
        ClearAttributes(path_, attributes_);
    }

    /// What a killed process leaves: the journal, which nobody holds any more.
    void LeaveJournal()
    {
        RunJournal journal;
        journal.Begin(path_, attributes_, {});
        const std::vector<String> journals = FilesOfFolder(ApplicationDataFolder);
        ASSERT_EQ(journals.size(), 1u);
        const std::string content = ReadWholeFile(journals.front());
        EXPECT_THAT(TextsOfRecovery(), IsEmpty()) << "this process is alive";
        left_ = content;
        journal.End();
    }

    void WriteJournal() const { data_.Write(u"Run-abcdef.journal", left_); }

    static std::vector<std::string> TextsOfRecovery()
    {
        std::vector<std::string> texts;
        for (const RecoveredFile& file : RecoverFromKilledRuns())
            texts.push_back(ToUtf8(file.text));
        return texts;
    }

    bool IsProtected() const { return GetAttributes(path_).bits & FileAttribute::ReadOnly; }

    const ErrorLogRecorder log_;
    const TemporaryFolder data_;
    const String before_ = std::exchange(ApplicationDataFolder, data_.Path());
    const TemporaryFolder folder_;
    const String path_ = folder_.Write(u"deck.pptx");
    FileAttributes attributes_;
    std::string left_;
};

}  // namespace

TEST_F(JournalOnWindows, HasTheNextStartProtectAFileAgain)
{
    LeaveJournal();
    WriteJournal();
    ASSERT_FALSE(IsProtected());

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("its mode is put back")));

    EXPECT_TRUE(IsProtected());
    EXPECT_THAT(FilesOfFolder(data_.Path()), IsEmpty());
}

TEST_F(JournalOnWindows, LeavesAFileAloneThatWasChangedSince)
{
    LeaveJournal();
    WriteJournal();
    folder_.Write(u"deck.pptx", "another content");

    EXPECT_THAT(TextsOfRecovery(), ElementsAre(HasSubstr("it has been changed since, so it stays as it is")));

    EXPECT_FALSE(IsProtected());
}

TEST_F(JournalOnWindows, IsNotFollowedWhenItIsDamaged)
{
    LeaveJournal();
    left_[left_.size() / 2] ^= 1;
    WriteJournal();

    EXPECT_THAT(TextsOfRecovery(), IsEmpty());

    EXPECT_FALSE(IsProtected());
    EXPECT_THAT(FilesOfFolder(data_.Path()), IsEmpty());
}

}  // namespace tessarine
