#include <filesystem>

#include "files/Files.h"
#include "saving/FileSizeLimit.h"
#include "support/FailingFolders.h"
#include "support/OrdinaryUser.h"
#include "ui/main/NoticesTest.h"

// Disks that are full and folders that are closed, as the strip of notices tells of them.

namespace tessarine
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// Room for the lines of the error log, and not for a project or a list.
constexpr rlim_t littleRoom = 900;

using NoticesPosixTest = NoticesTest;

TEST_F(NoticesPosixTest, ASaveOnAFullDiskKeepsTheMarkAndIsTold)
{
    TypeStartFolder("/typed");
    const String path = folder.PathOf(u"job.tsq");
    {
        const FileSizeLimit disk(littleRoom);
        Save("menuSave", path);
    }

    EXPECT_FALSE(FileExists(path));
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(Title(), "job (Modified) - Tessarine");
    EXPECT_EQ(Notice(), "The project was not saved as " + ToUtf8(path) + ". The disk is full.");
    EXPECT_THAT(messages.Messages(), IsEmpty());

    Choose("menuSave");

    EXPECT_TRUE(FileExists(path));
    EXPECT_EQ(Title(), "job - Tessarine");
    EXPECT_EQ(Notice(), "");
}

TEST_F(NoticesPosixTest, ASaveAsOnAFullDiskKeepsTheMarkAndTheOldFile)
{
    const String path = ProjectFile(u"job.tsq");
    const std::string before = ContentOf(path);
    Open(path);
    TypeStartFolder("/typed");
    {
        const FileSizeLimit disk(littleRoom);
        Save("menuSaveAs", path);
    }

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(Notice(), HasSubstr("The disk is full."));
    EXPECT_EQ(ContentOf(path), before);
}

TEST_F(NoticesPosixTest, AnExportOnAFullDiskIsTold)
{
    EditPairs({{String(1000, u'a'), u"b"}});
    const auto exportTo = [&](const String& path) {
        const FileSizeLimit disk(littleRoom);
        Save("mnuExportList", path);
    };
    for (const char16_t* name : {u"list.csv", u"list.xls"}) {
        const String path = folder.PathOf(name);

        exportTo(path);

        // The number of the failure is Excel's, which has one for all; its text is the system's.
        EXPECT_THAT(Notice(), StartsWith("The list was not saved as " + ToUtf8(path) + ". Can't save it: "));
        EXPECT_FALSE(FileExists(path));
    }
    exportTo(folder.PathOf(u"list.tab"));
    EXPECT_EQ(Notice(), "The list was not saved as " + ToUtf8(folder.PathOf(u"list.tab")) + ". The disk is full.");
    EXPECT_THAT(messages.Messages(), IsEmpty());

    Save("mnuExportList", folder.PathOf(u"list.tab"));

    EXPECT_EQ(Notice(), "");
}

TEST_F(NoticesPosixTest, TheDefaultProjectOnAFullDiskIsTold)
{
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Cancel);
    const FileSizeLimit disk(littleRoom);

    Window().close();

    EXPECT_EQ(Notice(), "The job could not be kept for the next start. The disk is full.");
}

TEST_F(NoticesPosixTest, ASaveIntoAFolderThatIsClosedIsTold)
{
    TypeStartFolder("/typed");
    const String closed = folder.MakeFolder(u"closed");
    SetMode(closed, 0555);
    const OrdinaryUser user;
    user.TakeOver(folder.Path());

    Save("menuSave", closed + u"/job.tsq");

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(Notice(), HasSubstr("Access is denied."));
}

TEST_F(NoticesPosixTest, AProjectThatMayNotBeReadIsTold)
{
    const String path = ProjectFile(u"job.tsq");
    Window();
    SetMode(path, 0);
    const OrdinaryUser user;
    user.TakeOver(folder.Path());

    Open(path);

    EXPECT_EQ(Notice(), "The project " + ToUtf8(path) + " could not be opened. Access is denied.");
}

class ScanNoticeTest : public NoticesTest
{
protected:
    void Start()
    {
        messages.Next(MessageAnswer::No);
        Click("cmdStartReplacing(1)");
    }

    /// A folder with a presentation, and one below it with several.
    void SetFolders()
    {
        EditPairs({{u"Fabrikam", u""}});
        folder.Write(u"decks/a.pptx");
        for (const char16_t* name : {u"decks/closed/b.pptx", u"decks/closed/c.pptx", u"decks/closed/d.pptx"})
            folder.Write(name);
        TypeStartFolder(ToQt(folder.PathOf(u"decks")));
        ClickBox("chkIncludesubfolders");
    }
};

TEST_F(ScanNoticeTest, AFolderBelowThatMayNotBeReadIsNamed)
{
    SetFolders();
    const String closed = folder.PathOf(u"decks/closed");
    SetMode(closed, 0);
    {
        const OrdinaryUser user;
        user.TakeOver(folder.Path());
        Start();
    }

    EXPECT_THAT(Notice(),
                HasSubstr("Folders that could not be read and are left out: 1. The first is " + ToUtf8(closed) + ": "));
    EXPECT_EQ(CurrentProject->FilesToProcess.size(), 1U);

    SetMode(closed, 0755);
    Start();
    EXPECT_EQ(Notice(), "") << "the next count read it";
}

TEST_F(ScanNoticeTest, AFolderThatCannotBeReadToItsEndIsNotToldOfAListOfFiles)
{
    SetFolders();
    {
        const FailingFolders failing(1);
        Start();
    }
    ASSERT_NE(Notice(), "");
    The<QRadioButton>("optFileProcess(1)").setChecked(true);
    Type("txtGetFileName", ToQt(folder.Write(u"files.txt", ToUtf8(folder.PathOf(u"decks/a.pptx")))));
    const std::size_t before = messages.Messages().size();

    Start();

    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(messages.Messages().size(), before + 1) << "the question alone";
}

}  // namespace
}  // namespace tessarine
