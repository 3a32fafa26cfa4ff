#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QRadioButton>
#include <QUrl>

#include "files/Files.h"
#include "model/ListColumns.h"
#include "platform/PathSeparator.h"
#include "ui/main/NoticesTest.h"
#include "ui/main/RunFromWindowTest.h"

// Files and folders that are dropped on the window.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DropTest : public NoticesTest
{
protected:
    /// Drags what has these addresses from another program onto a part of the window, and lets go. False when the
    /// window does not take it.
    bool DropUrls(const QList<QUrl>& urls, const char* name = "SSTab1")
    {
        QWidget& target = The(name);
        QMimeData data;
        data.setUrls(urls);
        const QPointF at = target.rect().center();
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &enter);
        if (!enter.isAccepted())
            return false;
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction) << "a move would delete the files";
        QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &drop);
        return true;
    }

    bool Drop(const std::vector<String>& paths, const char* name = "SSTab1")
    {
        QList<QUrl> urls;
        for (const String& path : paths)
            urls += QUrl::fromLocalFile(ToQt(path));
        return DropUrls(urls, name);
    }

    /// A list of pairs with one text to find.
    String PairList(StringView name, const String& find)
    {
        const ProjectOwner project(powerPoint.Provider());
        project->FindAndReplaceList->Add(find, u"", std::make_shared<OptionSetting>(), project.get());
        String path = folder.PathOf(name);
        project->FindAndReplaceList->ExportsList(path);
        return path;
    }

    /// The list of pairs comes from a file, or from the grid.
    void TakePairsFrom(const char* option) { The<QRadioButton>(option).setChecked(true); }
};

TEST_F(DropTest, AFolderBecomesTheStartFolder)
{
    The<QRadioButton>("optFileProcess(1)").setChecked(true);
    const String decks = folder.MakeFolder(u"decks");

    EXPECT_TRUE(Drop({decks}));

    EXPECT_EQ(Text("txtStartFolder"), ToUtf8(decks + PathSeparator));
    EXPECT_TRUE(IsChecked("optFileProcess(0)"));
    EXPECT_EQ(Tab(), 1);
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(DropTest, PresentationsBecomeAListOfExactlyThese)
{
    const String a = folder.Write(u"decks/a.pptx");
    const String b = folder.Write(u"decks/ö b.ppt");
    folder.Write(u"decks/not dropped.pptx");

    EXPECT_TRUE(Drop({a, b}));

    EXPECT_TRUE(IsChecked("optFileProcess(1)"));
    EXPECT_EQ(Tab(), 1);
    Window().FillProjectObject();
    EXPECT_EQ(CurrentProject->GetFileToProcessFileCount(), 2);
    EXPECT_THAT(CurrentProject->FilesToProcess, ElementsAre(a, b));
}

TEST_F(DropTest, PresentationsThatCannotBeListedAreTold)
{
    folder.Write(u"data/Dropped files", "a file where the folder should be");
    const String deck = folder.Write(u"a.pptx");

    EXPECT_TRUE(Drop({deck}));

    EXPECT_THAT(Notice(), HasSubstr("The names of the presentations could not be kept. "));
    EXPECT_TRUE(IsChecked("optFileProcess(0)"));
}

TEST_F(DropTest, ATextFileBecomesTheListOfFiles)
{
    const String list = folder.Write(u"files.txt");

    EXPECT_TRUE(Drop({list}, "cmdStartReplacing(0)"));

    EXPECT_EQ(Text("txtGetFileName"), ToUtf8(list));
    EXPECT_TRUE(IsChecked("optFileProcess(1)"));
    EXPECT_EQ(Tab(), 1);
}

TEST_F(DropTest, AListOfPairsIsImportedWhereTheGridIsChosen)
{
    EditPairs({{u"old", u""}});
    ShowTab(2);

    EXPECT_TRUE(Drop({PairList(u"list.csv", u"dropped")}));

    EXPECT_THAT(Finds(), ElementsAre("dropped"));
    EXPECT_EQ(Cell(1, ItemColumn::FindWhat), "dropped");
    EXPECT_EQ(Text("txtLoadsearch"), "");
    EXPECT_EQ(Tab(), 0);
}

TEST_F(DropTest, AListOfPairsGoesIntoItsBoxWhereThatIsChosen)
{
    EditPairs({{u"kept", u""}});
    TakePairsFrom("optLoad(0)");
    const String list = PairList(u"list.csv", u"dropped");

    EXPECT_TRUE(Drop({list}, "cmdStartReplacing(0)"));

    EXPECT_EQ(Text("txtLoadsearch"), ToUtf8(list));
    EXPECT_THAT(Finds(), ElementsAre("kept"));
}

TEST_F(DropTest, AListOfPairsGoesWhereItIsDropped)
{
    EditPairs({{u"kept", u""}});
    const String list = PairList(u"list.csv", u"dropped");

    EXPECT_TRUE(Drop({list}, "optLoad(0)"));
    EXPECT_EQ(Text("txtLoadsearch"), ToUtf8(list));
    EXPECT_TRUE(IsChecked("optLoad(0)"));
    EXPECT_THAT(Finds(), ElementsAre("kept"));

    EXPECT_TRUE(Drop({list}, "grdItems"));
    EXPECT_TRUE(IsChecked("optLoad(1)"));
    EXPECT_THAT(Finds(), ElementsAre("dropped"));
}

TEST_F(DropTest, AListOfPairsThatCannotBeReadLeavesTheGrid)
{
    EditPairs({{u"kept", u""}});

    EXPECT_TRUE(Drop({folder.Write(u"list.csv", "one,two\r\n")}));

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1056"), MessageIcon::Exclamation}));
    EXPECT_THAT(Notice(), HasSubstr("Number of its columns: 2."));
    EXPECT_THAT(Finds(), ElementsAre("kept"));
}

TEST_F(DropTest, ABoxForTextGetsNoAddressOfAFile)
{
    Window();
    ShowTab(1);
    const String decks = folder.MakeFolder(u"decks");

    EXPECT_TRUE(Drop({decks}, "txtStartFolder"));

    EXPECT_EQ(Text("txtStartFolder"), ToUtf8(decks + PathSeparator));
}

TEST_F(DropTest, ABoxForTextStillTakesText)
{
    Window();
    ShowTab(1);
    QMimeData data;
    data.setText("/typed elsewhere");
    auto& box = The("txtStartFolder");
    QDragEnterEvent enter(box.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &enter);
    QDropEvent drop(box.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&box, &drop);

    EXPECT_EQ(Text("txtStartFolder"), "/typed elsewhere");
}

TEST_F(DropTest, AProjectIsOpened)
{
    const String path = ProjectFile(u"job.tsq", u"/stored");

    EXPECT_TRUE(Drop({path}));

    EXPECT_EQ(Window().ProjectFile(), path);
    EXPECT_EQ(Text("txtStartFolder"), "/stored");
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

TEST_F(DropTest, AProjectIsAskedAboutWhenTheJobHasChanged)
{
    const String path = ProjectFile(u"job.tsq", u"/stored");
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Cancel);

    Drop({path});

    EXPECT_THAT(messages.Messages(),
                ElementsAre(Message{GlobalMsg(u"1048"), MessageIcon::None, MessageButtons::YesNoCancel}));
    EXPECT_EQ(Text("txtStartFolder"), "/typed");

    messages.Next(MessageAnswer::No);
    Drop({path});
    EXPECT_EQ(Text("txtStartFolder"), "/stored");
}

TEST_F(DropTest, YesSavesTheChangedJobBeforeTheProjectIsOpened)
{
    const String path = ProjectFile(u"job.tsq", u"/stored");
    TypeStartFolder("/typed");
    Window().FillProjectObject();  // the question saves as Save As does
    messages.Next(MessageAnswer::Yes);
    shell.NextFile(folder.PathOf(u"mine.tsq"));

    Drop({path});

    EXPECT_TRUE(FileExists(folder.PathOf(u"mine.tsq")));
    EXPECT_EQ(Window().ProjectFile(), path);
}

TEST_F(DropTest, AProjectThatIsCutIsTold)
{
    Drop({folder.Write(u"job.tsq", "")});

    EXPECT_THAT(Notice(), HasSubstr("The end of the file is missing."));
}

TEST_F(DropTest, AnythingElseIsRefusedByANotice)
{
    const String deck = folder.Write(u"a.pptx");
    for (const std::vector<String>& paths : std::vector<std::vector<String>>{
             {folder.Write(u"list.xlsx")}, {deck, folder.MakeFolder(u"decks")}, {folder.PathOf(u"gone.pptx")}}) {
        EXPECT_TRUE(Drop(paths));
        EXPECT_THAT(Notice(), HasSubstr("can't be used here"));
        Click("cmdCloseNotice");
    }
    EXPECT_TRUE(DropUrls({QUrl("https://example.com/a.pptx")}));
    EXPECT_THAT(Notice(), HasSubstr("can't be used here"));
    EXPECT_FALSE(Window().IsModifed());

    Drop({deck});

    EXPECT_EQ(Notice(), "");
}

TEST_F(DropTest, WhatHoldsNoFilesIsNotTaken)
{
    QMimeData data;
    data.setText("a text");
    QDragEnterEvent enter({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);

    QApplication::sendEvent(&Window(), &enter);

    EXPECT_FALSE(enter.isAccepted());
}

class DropInRunTest : public RunFromWindowTest
{
};

TEST_F(DropInRunTest, NothingIsTakenThatWouldChangeTheJobOfTheRun)
{
    SetJobOver({u"a.pptx", u"b.pptx"});
    std::optional<bool> isTaken;
    Before(u"b.pptx", [&] {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(ToQt(decks.Path()))});
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&Window(), &enter);
        isTaken = enter.isAccepted();
    });

    Find();

    EXPECT_EQ(isTaken, false);
}

}  // namespace
}  // namespace tessarine
