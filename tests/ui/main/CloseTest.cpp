#include "ui/main/MainWindowTest.h"

#include <QAction>

#include "app/Main.h"
#include "files/Files.h"

// The close of the window: the default project, and the question about unsaved changes.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class CloseTest : public MainWindowTest
{
protected:
    /// Types a start folder, which marks the job.
    void TypeStartFolder(const QString& path)
    {
        Window();
        ShowTab(1);
        Type("txtStartFolder", path);
        ASSERT_TRUE(Window().IsModifed());
    }

    bool CloseEndsTheWindow()
    {
        Window().close();
        return !Window().isVisible();
    }

    std::string StartFolderIn(const String& path)
    {
        const ProjectOwner project(powerPoint.Provider());
        std::int32_t error = 0;
        return project->LoadProject(path, error) ? ToUtf8(project->options->FileToProcessFolderPath) : "<not loaded>";
    }

    void ExpectTheQuestion()
    {
        EXPECT_THAT(messages.Messages(),
                    ElementsAre(Message{GlobalMsg(u"1048"), MessageIcon::None, MessageButtons::YesNoCancel}));
    }
};

TEST_F(CloseTest, AJobWithoutChangesClosesUnaskedAndIsTheDefaultProject)
{
    TypeStartFolder("/typed");
    Window().PutIsModifed(false);

    EXPECT_TRUE(CloseEndsTheWindow());

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_EQ(StartFolderIn(DefaultProjectPath()), "/typed");
    EXPECT_EQ(DefaultProjectPath(), folder.PathOf(u"data/Default.tsq"));
}

TEST_F(CloseTest, TheNextWindowOpensInTheSamePlaceAndSize)
{
    Window().setGeometry(30, 50, 700, 650);
    Window().PutIsModifed(false);
    const QRect place = Window().geometry();

    EXPECT_TRUE(CloseEndsTheWindow());

    EXPECT_EQ(frmMain().geometry(), place);
}

TEST_F(CloseTest, NoClosesAndLeavesTheProjectFileAsItWas)
{
    String path = folder.PathOf(u"job.tsq");
    Window();
    CurrentProject->SaveAsProject(path, true);
    const std::string before = ContentOf(path);
    Window().PutProjectFile(path);
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::No);

    EXPECT_TRUE(CloseEndsTheWindow());

    ExpectTheQuestion();
    EXPECT_EQ(ContentOf(path), before);
    EXPECT_EQ(StartFolderIn(DefaultProjectPath()), "/typed");
}

TEST_F(CloseTest, CancelKeepsTheWindowButTheDefaultProjectIsWritten)
{
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Cancel);

    EXPECT_FALSE(CloseEndsTheWindow());

    ExpectTheQuestion();
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(StartFolderIn(DefaultProjectPath()), "/typed");
}

TEST_F(CloseTest, EachAttemptWritesTheDefaultProjectAnew)
{
    for (const char* path : {"/first", "/second"}) {
        TypeStartFolder(path);
        messages.Next(MessageAnswer::Cancel);
        EXPECT_FALSE(CloseEndsTheWindow());
        EXPECT_EQ(StartFolderIn(DefaultProjectPath()), path);
    }
}

TEST_F(CloseTest, YesSavesTheOpenFileWithoutADialog)
{
    String path = folder.PathOf(u"job.tsq");
    Window();
    CurrentProject->SaveAsProject(path, true);
    Window().PutProjectFile(path);
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Yes);

    EXPECT_TRUE(CloseEndsTheWindow());

    ExpectTheQuestion();
    EXPECT_THAT(shell.FileDialogs(), IsEmpty());
    EXPECT_EQ(StartFolderIn(path), "/typed");
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(CloseTest, YesAsksForAFileAndWritesTheFormToIt)
{
    const String path = folder.PathOf(u"new.tsq");
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Yes);
    shell.NextFile(path);

    EXPECT_TRUE(CloseEndsTheWindow());

    ASSERT_EQ(shell.FileDialogs().size(), 1U);
    EXPECT_TRUE(shell.FileDialogs().front().isSave);
    EXPECT_EQ(StartFolderIn(path), "/typed");
    EXPECT_EQ(Window().ProjectFile(), path);
}

TEST_F(CloseTest, YesAndThenACancelledDialogKeepsTheWindow)
{
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Yes);
    shell.NextFile(std::nullopt);

    EXPECT_FALSE(CloseEndsTheWindow());

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(StartFolderIn(DefaultProjectPath()), "/typed");
}

TEST_F(CloseTest, YesAndThenABlankNameKeepsTheWindow)
{
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Yes);
    shell.NextFile(u" ");

    EXPECT_FALSE(CloseEndsTheWindow());
}

TEST_F(CloseTest, ExitAsksToo)
{
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Cancel);

    Choose("mnuExit");

    ExpectTheQuestion();
    EXPECT_TRUE(Window().isVisible());

    messages.Next(MessageAnswer::No);
    Choose("mnuExit");
    EXPECT_FALSE(Window().isVisible());
}

}  // namespace
}  // namespace tessarine
