#include "ui/main/MainWindowTest.h"

#include <QAction>
#include <QMenu>

#include "files/Files.h"

// Opening and saving of project files, and the menu of those last used.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const String projectFilter = u"Tessarine [*.tsq]";

class ProjectFilesTest : public MainWindowTest
{
protected:
    /// A project file on disk, of a job over a folder with one pair.
    String ProjectFile(StringView name, const String& startFolder = u"/decks", const String& find = u"stored")
    {
        const ProjectOwner project(powerPoint.Provider());
        project->options->FileToProcessFolderPath = startFolder;
        project->CustomProperies->Add(u"FindAndReplaceFilePath", {});
        project->CustomProperies->Add(u"FindAndReplaceListSource", u"INTERNAL");
        project->CustomProperies->Add(u"LANG", {});
        const auto setting = std::make_shared<OptionSetting>();
        setting->InSlides = true;
        project->FindAndReplaceList->Add(find, u"", setting, project.get());
        String path = folder.PathOf(name);
        project->SaveAsProject(path, true);
        return path;
    }

    /// The start folder in a project file.
    std::string StartFolderIn(const String& path)
    {
        const ProjectOwner project(powerPoint.Provider());
        std::int32_t error = 0;
        return project->LoadProject(path, error) ? ToUtf8(project->options->FileToProcessFolderPath) : "<not loaded>";
    }

    QList<QAction*> RecentItems() { return The<QAction>("mnuRecent").menu()->actions(); }

    /// The paths that the items in sight stand for.
    std::vector<std::string> RecentPaths()
    {
        std::vector<std::string> paths;
        for (const QAction* item : RecentItems())
            if (item->isVisible() && !item->data().toString().isEmpty())
                paths.push_back(item->data().toString().toStdString());
        return paths;
    }

    void TypeStartFolder(const QString& path)
    {
        ShowTab(1);
        Type("txtStartFolder", path);
    }
};

TEST_F(ProjectFilesTest, OpenAsksForAFileThatExists)
{
    shell.NextFile(std::nullopt);

    Choose("mnuOpen");

    ASSERT_EQ(shell.FileDialogs().size(), 1U);
    const auto& [dialog, isSave] = shell.FileDialogs().front();
    EXPECT_FALSE(isSave);
    EXPECT_EQ(dialog.FileName, u"");
    EXPECT_EQ(dialog.DefaultExt, u"tsq");
    EXPECT_EQ(dialog.Flags, FileDialogFlag::FileMustExist);
    EXPECT_EQ(dialog.Filter, projectFilter);
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"109"));
}

TEST_F(ProjectFilesTest, ACancelledOpenChangesNothingAndSaysNothing)
{
    EditPairs({{u"kept", u""}});
    Window().PutIsModifed(true);
    shell.NextFile(std::nullopt);

    Choose("mnuOpen");

    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ProjectFilesTest, OpenDropsUnsavedChangesUnasked)
{
    const String path = ProjectFile(u"job.tsq");
    EditPairs({{u"unsaved", u""}});
    Window().PutIsModifed(true);
    shell.NextFile(path);

    Choose("mnuOpen");

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(Finds(), ElementsAre("stored"));
    EXPECT_EQ(Cell(1, ItemColumn::FindWhat), "stored");
    EXPECT_EQ(Text("txtStartFolder"), "/decks");
    EXPECT_EQ(Window().ProjectFile(), path);
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_EQ(Title(), "job - Tessarine");
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(path)));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ProjectFilesTest, AFileWithAnotherExtensionIsRefusedBeforeItIsRead)
{
    ProjectFile(u"job.tsq");
    const String path = folder.Write(u"job.dat", ContentOf(folder.PathOf(u"job.tsq")));
    EditPairs({{u"kept", u""}});
    shell.NextFile(path);

    Choose("mnuOpen");

    EXPECT_THAT(messages.Messages(),
                ElementsAre(Message{u"Invalid Tessarine Project File.", MessageIcon::Exclamation}));
    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_EQ(Window().ProjectFile(), u"");
    EXPECT_THAT(RecentPaths(), IsEmpty());
}

TEST_F(ProjectFilesTest, TheExtensionOfAProjectFileMayBeInCapitals)
{
    ProjectFile(u"job.tsq");
    shell.NextFile(folder.Write(u"JOB.TSQ", ContentOf(folder.PathOf(u"job.tsq"))));

    Choose("mnuOpen");

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_EQ(Title(), "JOB.TSQ - Tessarine");
}

TEST_F(ProjectFilesTest, AMissingProjectFileIsToldByItsMessage)
{
    EditPairs({{u"kept", u""}});
    shell.NextFile(folder.PathOf(u"gone.tsq"));

    Choose("mnuOpen");

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{u"File not present.", MessageIcon::Exclamation}));
    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_EQ(Window().ProjectFile(), u"");
}

TEST_F(ProjectFilesTest, ABrokenProjectFileOpensNothing)
{
    EditPairs({{u"kept", u""}});
    shell.NextFile(folder.Write(u"broken.tsq", "not a project"));

    Choose("mnuOpen");

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_EQ(Window().ProjectFile(), u"");
    EXPECT_THAT(RecentPaths(), IsEmpty());
    EXPECT_THAT(Log(), testing::Not(IsEmpty()));
}

TEST_F(ProjectFilesTest, SaveOfANewJobWritesTheFormToAChosenFile)
{
    const String path = folder.PathOf(u"new.tsq");
    TypeStartFolder("/typed");
    shell.NextFile(path);

    Choose("menuSave");

    ASSERT_EQ(shell.FileDialogs().size(), 1U);
    const auto& [dialog, isSave] = shell.FileDialogs().front();
    EXPECT_TRUE(isSave);
    EXPECT_EQ(dialog.Filter, projectFilter);
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"110"));
    EXPECT_EQ(dialog.DefaultExt, u"") << "only opening sets it";
    EXPECT_EQ(dialog.Flags, 0);
    EXPECT_EQ(StartFolderIn(path), "/typed");
    EXPECT_EQ(Window().ProjectFile(), path);
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(path)));
}

TEST_F(ProjectFilesTest, SaveGivesANameWithoutExtensionItsOwn)
{
    shell.NextFile(folder.PathOf(u"new"));

    Choose("menuSave");

    EXPECT_EQ(Window().ProjectFile(), folder.PathOf(u"new.tsq"));
    EXPECT_TRUE(FileExists(folder.PathOf(u"new.tsq")));
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(folder.PathOf(u"new.tsq"))));
}

TEST_F(ProjectFilesTest, ACancelledSaveMarksTheJob)
{
    Window();
    shell.NextFile(std::nullopt);

    Choose("menuSave");

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(Window().ProjectFile(), u"");
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

TEST_F(ProjectFilesTest, SaveUnderABlankNameClearsTheMarkAndWritesNothing)
{
    TypeStartFolder("/typed");
    ASSERT_TRUE(Window().IsModifed());
    shell.NextFile(u"  ");

    Choose("menuSave");

    EXPECT_FALSE(Window().IsModifed());
    EXPECT_EQ(Window().ProjectFile(), u"");
    EXPECT_THAT(RecentPaths(), IsEmpty());
}

TEST_F(ProjectFilesTest, SaveOfAnOpenFileShowsNoDialog)
{
    const String first = ProjectFile(u"first.tsq");
    const String second = ProjectFile(u"second.tsq");
    for (const String& path : {first, second}) {
        shell.NextFile(path);
        Choose("mnuOpen");
    }
    Window().PutProjectFile(first);
    TypeStartFolder("/typed");

    Choose("menuSave");

    EXPECT_EQ(shell.FileDialogs().size(), 2U);
    EXPECT_EQ(StartFolderIn(first), "/typed");
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(second), ToUtf8(first)));
}

TEST_F(ProjectFilesTest, SaveAsLeavesTheEditsOfTheFormOut)
{
    const String path = folder.PathOf(u"copy.tsq");
    Options().FileToProcessFolderPath = u"/in the project";
    TypeStartFolder("/in the form");
    shell.NextFile(path);

    Choose("menuSaveAs");

    const auto& [dialog, isSave] = shell.FileDialogs().front();
    EXPECT_TRUE(isSave);
    EXPECT_EQ(dialog.Filter, projectFilter);
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"110"));
    EXPECT_EQ(StartFolderIn(path), "/in the project");
    EXPECT_EQ(Text("txtStartFolder"), "/in the form");
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_EQ(Window().ProjectFile(), path);
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(path)));
}

TEST_F(ProjectFilesTest, ACancelledSaveAsLeavesTheMarkAsItWas)
{
    for (const bool isModified : {false, true}) {
        Window().PutIsModifed(isModified);
        shell.NextFile(std::nullopt);

        Choose("menuSaveAs");

        EXPECT_EQ(Window().IsModifed(), isModified);
        EXPECT_EQ(Window().ProjectFile(), u"");
    }
}

TEST_F(ProjectFilesTest, SaveAsUnderABlankNameLeavesTheMarkToo)
{
    Window().PutIsModifed(true);
    shell.NextFile(u" ");

    Choose("menuSaveAs");

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(RecentPaths(), IsEmpty());
}

TEST_F(ProjectFilesTest, SavingKeepsExtensionAndFlagOfTheLastOpen)
{
    shell.NextFile(std::nullopt);
    Choose("mnuOpen");
    const String path = folder.PathOf(u"new");
    shell.NextFile(path);

    Choose("menuSaveAs");

    const CommonDialog& dialog = shell.FileDialogs().back().properties;
    EXPECT_EQ(dialog.DefaultExt, u"tsq");
    EXPECT_EQ(dialog.Flags, FileDialogFlag::FileMustExist);
    EXPECT_EQ(Window().ProjectFile(), folder.PathOf(u"new.tsq"));
}

TEST_F(ProjectFilesTest, SavingProposesTheFileOfTheDialogBefore)
{
    const String path = ProjectFile(u"job.tsq");
    shell.NextFile(path);
    Choose("mnuOpen");
    shell.NextFile(std::nullopt);

    Choose("menuSaveAs");

    EXPECT_EQ(shell.FileDialogs().back().properties.FileName, path);
}

TEST_F(ProjectFilesTest, ARecentFileIsOpenedAndTheJobStaysMarked)
{
    const String first = ProjectFile(u"first.tsq", u"/first", u"one");
    const String second = ProjectFile(u"second.tsq", u"/second", u"two");
    for (const String& path : {first, second}) {
        shell.NextFile(path);
        Choose("mnuOpen");
    }

    RecentItems().at(1)->trigger();

    EXPECT_EQ(Window().ProjectFile(), first);
    EXPECT_EQ(Text("txtStartFolder"), "/first");
    EXPECT_EQ(Cell(1, ItemColumn::FindWhat), "one");
    EXPECT_TRUE(Window().IsModifed()) << "filling the form marks the job, and nothing clears it";
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(first), ToUtf8(second)));
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

TEST_F(ProjectFilesTest, TheEmptyRecentItemDoesNothing)
{
    Window();
    ASSERT_EQ(RecentItems().size(), 1);
    EXPECT_EQ(RecentItems().at(0)->text(), "(Empty)");

    RecentItems().at(0)->trigger();

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_EQ(Window().ProjectFile(), u"");
}

TEST_F(ProjectFilesTest, ADeletedRecentFileIsToldAndStaysInTheList)
{
    const String path = ProjectFile(u"job.tsq");
    shell.NextFile(path);
    Choose("mnuOpen");
    Window().PutProjectFile({});
    std::remove(ToUtf8(path).c_str());

    RecentItems().at(0)->trigger();

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1054"), MessageIcon::None}));
    EXPECT_THAT(RecentPaths(), ElementsAre(ToUtf8(path)));
    EXPECT_EQ(Window().ProjectFile(), u"");
}

TEST_F(ProjectFilesTest, ARecentFileThatFailsToLoadIsTheOpenFile)
{
    const String path = ProjectFile(u"job.tsq");
    shell.NextFile(path);
    Choose("mnuOpen");
    Window().PutProjectFile({});
    folder.Write(u"job.tsq", "not a project");

    RecentItems().at(0)->trigger();

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_EQ(Window().ProjectFile(), path);
    EXPECT_THAT(Finds(), ElementsAre("stored"));
}

}  // namespace
}  // namespace tessarine
