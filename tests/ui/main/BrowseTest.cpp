#include "ui/main/MainWindowTest.h"

#include <QLineEdit>
#include <QRadioButton>

#include "platform/PathSeparator.h"

// The buttons that choose files and folders, and the double click that opens them.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class BrowseTest : public MainWindowTest
{
protected:
    /// Shows the tab of the files, over a folder (0) or a file that lists them (1).
    void ShowFiles(int source)
    {
        The<QRadioButton>(source == 0 ? "optFileProcess(0)" : "optFileProcess(1)").setChecked(true);
        ShowTab(1);
        Window().PutIsModifed(false);
    }

    void DoubleClick(const char* name)
    {
        ASSERT_TRUE(The(name).isVisible() && The(name).isEnabled()) << name;
        QTest::mouseDClick(&The(name), Qt::LeftButton);
    }
};

// The file that lists files.

TEST_F(BrowseTest, TheFileListIsChosenAmongTextFiles)
{
    ShowFiles(1);
    const String path = folder.Write(u"files.txt");
    shell.NextFile(path);

    Click("cmdBrowse3");

    const auto& [dialog, isSave] = shell.FileDialogs().front();
    EXPECT_FALSE(isSave);
    EXPECT_EQ(dialog.Filter, u"Text File|*.txt");
    EXPECT_EQ(dialog.FileName, u"");
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"111"));
    EXPECT_EQ(Text("txtGetFileName"), ToUtf8(path));
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

TEST_F(BrowseTest, TheExtensionOfTheFileListMayBeInCapitals)
{
    ShowFiles(1);
    const String path = folder.Write(u"FILES.Txt");
    shell.NextFile(path);

    Click("cmdBrowse3");

    EXPECT_EQ(Text("txtGetFileName"), ToUtf8(path));
}

TEST_F(BrowseTest, AFileListOfAnotherTypeIsRefused)
{
    ShowFiles(1);
    for (const char16_t* name : {u"files.csv", u"files", u"files.txt.bak"}) {
        shell.NextFile(folder.Write(name));

        Click("cmdBrowse3");

        EXPECT_EQ(messages.Messages().back(), (Message{GlobalMsg(u"1037"), MessageIcon::Exclamation}));
        EXPECT_EQ(Text("txtGetFileName"), "");
    }
    EXPECT_EQ(messages.Messages().size(), 3U);
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(BrowseTest, AMissingFileListIsToldWithAnIcon)
{
    ShowFiles(1);
    shell.NextFile(folder.PathOf(u"gone.txt"));
    Click("cmdBrowse3");

    ShowTab(0);
    shell.NextFile(folder.PathOf(u"gone.csv"));
    Click("cmdBrowse1");

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1008"), MessageIcon::Exclamation},
                                                 Message{GlobalMsg(u"1008"), MessageIcon::None}));
    EXPECT_EQ(Text("txtGetFileName"), "");
    EXPECT_EQ(Text("txtLoadsearch"), "");
}

TEST_F(BrowseTest, ACancelledChoiceOfAFileListLeavesTheBox)
{
    ShowFiles(1);
    Type("txtGetFileName", "/kept.txt");
    shell.NextFile(std::nullopt);

    Click("cmdBrowse3");

    EXPECT_EQ(Text("txtGetFileName"), "/kept.txt");
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

// The list of pairs.

TEST_F(BrowseTest, TheListOfPairsIsChosenAmongItsThreeTypes)
{
    Window();
    const String path = folder.Write(u"list.Xls");
    shell.NextFile(path);

    Click("cmdBrowse1");

    const CommonDialog& dialog = shell.FileDialogs().front().properties;
    EXPECT_EQ(dialog.Filter, u"Tab File|*.Tab|CSV Files|*.csv|Excel Files|*.xls");
    EXPECT_EQ(dialog.FileName, u"");
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"106"));
    EXPECT_EQ(Text("txtLoadsearch"), ToUtf8(path));
    EXPECT_FALSE(Window().IsModifed()) << "the path of the list does not mark the job";
}

TEST_F(BrowseTest, AListOfAnotherTypeIsRefusedWithoutAnIcon)
{
    Window();
    shell.NextFile(folder.Write(u"list.xlsx"));

    Click("cmdBrowse1");

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1039"), MessageIcon::None}));
    EXPECT_EQ(Text("txtLoadsearch"), "");
}

// The folder.

TEST_F(BrowseTest, TheFolderDialogStartsAtTheFolderInTheBox)
{
    ShowFiles(0);
    Type("txtStartFolder", "/decks");
    shell.NextFolder(u"/other");

    Click("cmdBrowse2");

    ASSERT_EQ(shell.FolderDialogs().size(), 1U);
    EXPECT_EQ(shell.FolderDialogs().front().startFolder, u"/decks");
    EXPECT_EQ(shell.FolderDialogs().front().title, u"Please select a folder:");
    EXPECT_FALSE(shell.FolderDialogs().front().includeFiles);
}

TEST_F(BrowseTest, TheChosenFolderGetsATrailingSeparatorAndMarksTheJob)
{
    ShowFiles(0);
    shell.NextFolder(u"/decks");

    Click("cmdBrowse2");

    EXPECT_EQ(Text("txtStartFolder"), ToUtf8(u"/decks" + String(1, PathSeparator)));
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(BrowseTest, ACancelledFolderDialogLeavesTheBox)
{
    ShowFiles(0);
    Type("txtStartFolder", "/decks");
    Window().PutIsModifed(false);
    shell.NextFolder({});

    Click("cmdBrowse2");

    EXPECT_EQ(Text("txtStartFolder"), "/decks");
    EXPECT_FALSE(Window().IsModifed());
}

// Double clicks.

TEST_F(BrowseTest, ADoubleClickOpensWhatTheBoxNames)
{
    const String decks = folder.MakeFolder(u"decks");
    const String files = folder.Write(u"files.txt");
    const String list = folder.Write(u"list.csv");
    The<QLineEdit>("txtStartFolder").setText(ToQt(decks));
    The<QLineEdit>("txtGetFileName").setText(ToQt(files));
    The<QLineEdit>("txtLoadsearch").setText(ToQt(list));

    DoubleClick("txtLoadsearch");
    ShowFiles(0);
    DoubleClick("txtStartFolder");
    ShowFiles(1);
    DoubleClick("txtGetFileName");

    EXPECT_THAT(shell.Opened(), ElementsAre(list, decks, files));
}

TEST_F(BrowseTest, ADoubleClickThatOpensNothingSaysNothing)
{
    ShowFiles(0);
    shell.OpenerAnswers(ShellResult::NoAssociation);
    DoubleClick("txtStartFolder");
    Type("txtStartFolder", ToQt(folder.PathOf(u"gone")));
    DoubleClick("txtStartFolder");
    Type("txtStartFolder", ToQt(folder.Path()));
    DoubleClick("txtStartFolder");

#ifdef _WIN32  // whose shell is asked for anything, and tells itself what is missing
    EXPECT_THAT(shell.Opened(), ElementsAre(folder.PathOf(u"gone"), folder.Path()));
#else
    EXPECT_THAT(shell.Opened(), ElementsAre(folder.Path()));
#endif
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
