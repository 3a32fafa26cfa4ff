#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "DeckOnDisk.h"
#include "files/FileDescriptor.h"
#include "saving/FileDateTime.h"
#include "support/OrdinaryUser.h"
#include "support/WarningRecorder.h"

namespace tessarine::test
{
namespace
{

/// A deck whose only text is "Fabrikam", opened and changed but not saved.
class RehearsedSave : public testing::Test
{
protected:
    void OpenAndChange()
    {
        presentation_ = deck_.Open();
        ReplaceInShape(*presentation_, 1, 1, u"Fabrikam", u"Contoso");
    }

    Raised Rehearse() const
    {
        return RaisedBy([&] { presentation_->RehearseSave(); });
    }

    static std::ptrdiff_t FilesIn(const TemporaryFolder& folder)
    {
        return std::distance(std::filesystem::directory_iterator(ToUtf8(folder.Path())), {});
    }

    const DeckOnDisk deck_{Deck().Slide(Title(u"Fabrikam"))};
    std::shared_ptr<powerpoint::Presentation> presentation_;
};

TEST_F(RehearsedSave, LeavesTheFileAsItIs)
{
    const std::string before = deck_.Bytes();
    SetFileDateTime(deck_.Path(), {{1000000000, 0}, {1100000000, 0}, true});
    OpenAndChange();

    EXPECT_THAT(Rehearse(), FailsWith(0, ""));

    EXPECT_EQ(deck_.Bytes(), before);
    EXPECT_EQ(GetFileDateTime(deck_.Path()).lastWrite.tv_sec, 1100000000);
    EXPECT_EQ(FilesIn(deck_.Folder()), 1);
}

TEST_F(RehearsedSave, TellsWhetherThereIsSomethingToSave)
{
    OpenAndChange();
    presentation_->RehearseSave();
    EXPECT_EQ(presentation_->HasSavedChanges(), true);
    presentation_->Close();

    presentation_ = deck_.Open();
    presentation_->RehearseSave();
    EXPECT_EQ(presentation_->HasSavedChanges(), false);
}

TEST_F(RehearsedSave, MayBeFollowedByTheSave)
{
    OpenAndChange();
    presentation_->RehearseSave();
    presentation_->Save();
    presentation_->Close();

    EXPECT_EQ(ConsistencyFault(deck_.Path()), "");
    EXPECT_THAT(deck_.Package().Entry(slide1).bytes, testing::HasSubstr("Contoso"));
}

TEST_F(RehearsedSave, FailsInAFolderThatIsClosed)
{
    chmod(ToUtf8(deck_.Folder().Path()).c_str(), 0555);
    Raised rehearsed;
    Raised saved;
    {
        const OrdinaryUser user;
        user.TakeOver(deck_.Path());
        OpenAndChange();
        rehearsed = Rehearse();
        saved = RaisedBy([&] { presentation_->Save(); });
    }
    chmod(ToUtf8(deck_.Folder().Path()).c_str(), 0755);

    EXPECT_THAT(rehearsed, FailsWith(FailureNumber::AccessDenied, "no new file can be made beside it"));
    EXPECT_EQ(rehearsed.text, saved.text);
}

TEST_F(RehearsedSave, PassesWhereTheRunWouldClearTheProtection)
{
    chmod(ToUtf8(deck_.Folder().Path()).c_str(), 0777);
    const OrdinaryUser user;
    user.TakeOver(deck_.Path());
    chmod(ToUtf8(deck_.Path()).c_str(), 0444);
    OpenAndChange();

    EXPECT_THAT(Rehearse(), FailsWith(0, ""));
}

TEST_F(RehearsedSave, FailsForAFileOfSomebodyElse)
{
    chmod(ToUtf8(deck_.Path()).c_str(), 0644);
    chmod(ToUtf8(deck_.Folder().Path()).c_str(), 0777);
    const OrdinaryUser user;
    if (!user.IsAnotherUser())
        GTEST_SKIP() << "the system allows no other user";
    OpenAndChange();

    const Raised rehearsed = Rehearse();
    EXPECT_THAT(rehearsed, FailsWith(FailureNumber::AccessDenied, ToUtf8(deck_.Path())));
    EXPECT_EQ(rehearsed.text, RaisedBy([&] { presentation_->Save(); }).text);
}

TEST_F(RehearsedSave, FailsForAFileThatOthersHaveChanged)
{
    OpenAndChange();
    deck_.Folder().Write(u"deck.pptx", deck_.Bytes() + "x");

    EXPECT_THAT(Rehearse(), FailsWith(FailureNumber::SharingViolation, "since it was opened"));
}

TEST_F(RehearsedSave, FailsForAFileThatSomebodyIsWriting)
{
    OpenAndChange();
    const FileDescriptor writer(open(ToUtf8(deck_.Path()).c_str(), O_RDWR | O_CLOEXEC));

    EXPECT_THAT(Rehearse(), FailsWith(FailureNumber::SharingViolation, "has it open for writing"));
}

TEST_F(RehearsedSave, WarnsOfOtherNamesAsTheSaveDoes)
{
    std::filesystem::create_hard_link(ToUtf8(deck_.Path()), ToUtf8(deck_.Folder().PathOf(u"other.pptx")));
    OpenAndChange();
    const WarningRecorder rehearsed;
    presentation_->RehearseSave();
    const auto& warnings = rehearsed.Warnings();
    ASSERT_EQ(warnings.size(), 1U);

    const WarningRecorder saved;
    presentation_->Save();
    EXPECT_EQ(saved.Warnings(), warnings);
}

}  // namespace
}  // namespace tessarine::test
