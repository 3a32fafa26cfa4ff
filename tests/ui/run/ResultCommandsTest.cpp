#include <QClipboard>
#include <QPushButton>

#include "app/GlobalState.h"
#include "ui/run/ProcessingWindowTest.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class CopyLogTest : public ProcessingWindowTest
{
protected:
    std::string CopiedLog()
    {
        QGuiApplication::clipboard()->setText("before");
        Click("cmdCopyLog");
        return QGuiApplication::clipboard()->text().toStdString();
    }
};

TEST_F(CopyLogTest, ListsChangedFilesTheirItemsAndTheFilesWithoutACount)
{
    Add(Counted(u"/a.pptx",
                {{u"cat", {{Location::Slides, 3}, {Location::Notes, 0}}}, {u"dog", {{Location::Slides, 0}}}}));
    Add(NothingCounted(u"/b.pptx"));

    EXPECT_EQ(CopiedLog(),
              "/a.pptx - At least 1 occurrence(s) found \r\n"
              "\tcat\r\n"
              "\tdog\r\n"
              "cat - At least 1 occurrence(s) found \r\n"
              "\tSlides (3)\r\n"
              "\tNotes(0)\r\n"
              "dog - At least 1 occurrence(s) found \r\n"
              "\tSlides (0)\r\n"
              "/b.pptx - No occurrence(s) found \r\n");
}

TEST_F(CopyLogTest, HasOneBlockForAFileWhoseItemsHaveNoRows)
{
    Add(Counted(u"/a.pptx", {{u"cat", {}}, {u"dog", {}}}));

    EXPECT_EQ(CopiedLog(), "/a.pptx - At least 1 occurrence(s) found \r\n\tcat\r\n\tdog\r\n");
}

TEST_F(CopyLogTest, FollowsTheOrderOfAdditionWhenAFileWasReportedTwice)
{
    Add(Counted(u"/a.pptx", {{u"one", {{Location::Notes, 1}}}}));
    Add(Counted(u"/b.pptx", {{u"two", {{Location::Notes, 2}}}}));
    Add(Counted(u"/a.pptx", {{u"three", {{Location::Notes, 3}}}}));

    EXPECT_EQ(CopiedLog(),
              "/a.pptx - At least 1 occurrence(s) found \r\n\tone\r\n\tthree\r\n"
              "one - At least 1 occurrence(s) found \r\n\tNotes(1)\r\n"
              "/b.pptx - At least 1 occurrence(s) found \r\n\ttwo\r\n"
              "two - At least 1 occurrence(s) found \r\n\tNotes(2)\r\n"
              "three - At least 1 occurrence(s) found \r\n\tNotes(3)\r\n");
}

TEST_F(CopyLogTest, LeavesFilesWithErrorsOut)
{
    Add(NotProcessed(u"/a.pptx", u"Read Only File."));
    Add(NothingCounted(u"/b.pptx"));

    EXPECT_EQ(CopiedLog(), "/b.pptx - No occurrence(s) found \r\n");
}

TEST_F(CopyLogTest, EmptiesTheClipboardWhenThereIsNothingToTell)
{
    EXPECT_EQ(CopiedLog(), "");
}

TEST_F(CopyLogTest, WorksWhileTheRunIsGoing)
{
    BeginRun();
    Add(NothingCounted(u"/b.pptx"));

    EXPECT_EQ(CopiedLog(), "/b.pptx - No occurrence(s) found \r\n");
    EXPECT_FALSE(CurrentProject->IsProcessCancel);
}

// Opening a document.

class OpenDocumentTest : public ProcessingWindowTest
{
protected:
    OpenDocumentTest()
    {
        Add(Counted(file_, {{u"cat", {{Location::Slides, 1}}}}));
        Add(NothingCounted(file_));
        Add(NotProcessed(file_, u"Read Only File."));
        for (ResultTree* tree : {Window().trvChangedFiles, Window().trvNotChangedFiles, Window().trvErrors})
            tree->expandAll();
    }

    void DoubleClickRow(ResultTree& tree, const QModelIndex& index) { DoubleClick(tree, PointOf(tree, index)); }

    static QModelIndex Child(const QModelIndex& parent) { return parent.model()->index(0, 0, parent); }

    const String file_ = folder_.Write(u"a.pptx");
};

TEST_F(OpenDocumentTest, OpensAFileInEachTreeByDoubleClick)
{
    int opened = 0;
    for (ResultTree* tree : {Window().trvChangedFiles, Window().trvNotChangedFiles, Window().trvErrors}) {
        ShowTab(opened + 1);
        DoubleClickRow(*tree, tree->model()->index(0, 0));
        EXPECT_EQ(shell_.Opened().size(), static_cast<std::size_t>(++opened));
        EXPECT_TRUE(tree->isExpanded(tree->model()->index(0, 0)) || tree == Window().trvNotChangedFiles);
    }

    EXPECT_THAT(shell_.Opened(), ElementsAre(file_, file_, file_));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(OpenDocumentTest, DoesNothingOnAnItemOrLocation)
{
    ShowTab(1);
    ResultTree& tree = *Window().trvChangedFiles;
    const QModelIndex item = Child(tree.model()->index(0, 0));

    DoubleClickRow(tree, item);
    DoubleClickRow(tree, Child(item));
    ShowTab(3);
    DoubleClickRow(*Window().trvErrors, Child(Window().trvErrors->model()->index(0, 0)));

    EXPECT_THAT(shell_.Opened(), IsEmpty());
    EXPECT_TRUE(tree.isExpanded(item));
}

TEST_F(OpenDocumentTest, DoesNothingOnEmptySpace)
{
    ShowTab(1);
    ResultTree& tree = *Window().trvChangedFiles;

    DoubleClick(tree, {5, tree.viewport()->height() - 5});

    EXPECT_THAT(shell_.Opened(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(OpenDocumentTest, TakesThePointersLastPlaceOverATree)
{
    ShowTab(1);
    ResultTree& tree = *Window().trvChangedFiles;
    const QPoint onFile = PointOf(tree, tree.model()->index(0, 0));
    Window().trvChangedFiles_MouseMove(0, 0, static_cast<float>(onFile.x()), static_cast<float>(onFile.y()));

    Window().trvChangedFiles_DblClick();

    EXPECT_THAT(shell_.Opened(), ElementsAre(file_));
}

TEST_F(OpenDocumentTest, SaysWhyAFileDoesNotOpen)
{
    ShowTab(2);
    Add(NothingCounted(folder_.PathOf(u"gone.pptx")));
    ResultTree& tree = *Window().trvNotChangedFiles;
    shell_.OpenerAnswers(ShellResult::FileNotFound);

    DoubleClickRow(tree, tree.model()->index(1, 0));

    EXPECT_THAT(messages_.Messages(), ElementsAre(Message{u"File not found", MessageIcon::Exclamation}));
}

TEST_F(OpenDocumentTest, OpensTheCurrentFileByEnter)
{
    ShowTab(1);
    ResultTree& tree = *Window().trvChangedFiles;
    tree.setCurrentIndex(tree.model()->index(0, 0));

    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_THAT(shell_.Opened(), ElementsAre(file_));

    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(shell_.Opened().size(), 1u);
}

TEST_F(OpenDocumentTest, LogsAPathWithANul)
{
    const String path(u"/a\0b.pptx", 9);

    Window().OPenDocument({path, path});

    ASSERT_EQ(log_.Lines().size(), 1u);
    EXPECT_THAT(log_.Lines().front(), testing::HasSubstr("in procedure OpenDoc at Line No. 0 of Module modShell"));
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

// Backups.

class BackupButtonsTest : public ProcessingWindowTest
{
protected:
    BackupButtonsTest()
    {
        CurrentProject->AllowedExtensionPatterns = {u"*.Ppt*"};
        CurrentProject->options->FileToProcessSourceType = 1;
        CurrentProject->options->FileToProcessFilepath = folder_.Write(u"files.txt", ToUtf8(file_) + "\r\n");
    }

    const String file_ = folder_.Write(u"a.ppt", "changed");
    const String backup_ = folder_.Write(u"a.bak", "as before");
};

TEST_F(BackupButtonsTest, RestoreTheFiles)
{
    Click("cmdCommand(1)");

    EXPECT_EQ(ContentOf(file_), "as before");
    EXPECT_EQ(ContentOf(backup_), "as before");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(BackupButtonsTest, RemoveTheBackups)
{
    Click("cmdCommand(0)");

    EXPECT_EQ(ContentOf(file_), "changed");
    EXPECT_EQ(ContentOf(backup_), "<missing>");
}

TEST_F(BackupButtonsTest, WorkOnAFolder)
{
    CurrentProject->options->FileToProcessSourceType = 0;
    CurrentProject->options->FileToProcessFolderPath = folder_.Path();

    Click("cmdCommand(1)");

    EXPECT_EQ(ContentOf(file_), "as before");
}

TEST_F(BackupButtonsTest, StayInForceDuringARun)
{
    BeginRun();
    ShowTab(1);

    EXPECT_TRUE(The("cmdCommand(0)").isEnabled());
    Click("cmdCommand(1)");

    EXPECT_EQ(ContentOf(file_), "as before");
}

TEST_F(BackupButtonsTest, DoNothingUnderAnotherIndex)
{
    Window().cmdCommand_Click(2);

    EXPECT_EQ(ContentOf(file_), "changed");
    EXPECT_EQ(ContentOf(backup_), "as before");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(BackupButtonsTest, LogAProjectWithoutOptions)
{
    CurrentProject->options.reset();

    Click("cmdCommand(0)");

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 91 (Object variable or With block variable not set) in procedure "
                                          "cmdCommand_Click at Line No. 0 of Form frmProcessingDocuments"));
}

}  // namespace
}  // namespace tessarine
