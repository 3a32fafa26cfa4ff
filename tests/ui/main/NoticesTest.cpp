#include "ui/main/NoticesTest.h"

#include <QAction>
#include <QMenu>
#include <QRadioButton>
#include <QScreen>

#include "app/Main.h"
#include "files/Files.h"
#include "model/ListColumns.h"
#include "platform/NativePath.h"
#include "shell/WindowPlace.h"
#include "support/Deck.h"

// The strip of notices: what went wrong without a message.

namespace tessarine
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;

/// The headers of a list, separated by tabs.
std::string Headers()
{
    std::string headers;
    for (const char16_t* header : ListHeaders)
        headers += (headers.empty() ? "" : "\t") + ToUtf8(header);
    return headers + "\r\n";
}

TEST_F(NoticesTest, StripIsHiddenWhileThereIsNothingToTell)
{
    EXPECT_FALSE(The("fraNotice").isVisible());
}

TEST_F(NoticesTest, AProjectOfAnotherKindIsTold)
{
    const String path = folder.Write(u"job.tsq", "PK\x03\x04 and so on");

    Open(path);

    EXPECT_EQ(Notice(), "The project " + ToUtf8(path) + " could not be opened. It is not a Tessarine project.");
    EXPECT_EQ(More(), "");
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_EQ(Window().ProjectFile(), u"");
}

TEST_F(NoticesTest, ANoticeDoesNotPushTheWindowOverTheEdgeOfTheScreen)
{
    EditPairs({{u"a", u"aa"}});  // with its own line above the start buttons
    for (const char* page : {"fraReplacement", "fraFileProcess", "frmOptions"})
        The(page).setMinimumHeight(3000);                          // more than any screen has
    Open(folder.Write(String(120, u'x') + u".tsq", "not a job"));  // which takes several lines
    ASSERT_TRUE(The("fraNotice").isVisible());
    ASSERT_TRUE(The("lblEndless").isVisible());
    QCoreApplication::processEvents();

    EXPECT_LE(Window().minimumSizeHint().height() + FrameSize(Window()).height(),
              Window().screen()->availableSize().height());
}

TEST_F(NoticesTest, AProjectThatIsCutIsToldWhereverItIsCut)
{
    const std::string whole = ContentOf(ProjectFile(u"whole.tsq"));
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{7}, std::size_t{20}, whole.size() / 2, whole.size() - 1}) {
        const String path = folder.Write(u"job.tsq", whole.substr(0, length));

        Open(path);

        EXPECT_EQ(Notice(), "The project " + ToUtf8(path) + " could not be opened. The end of the file is missing.")
            << length;
    }
    EXPECT_EQ(More(), "") << "one notice of one cause";
}

TEST_F(NoticesTest, ADamagedProjectIsTold)
{
    std::string bytes = ContentOf(ProjectFile(u"whole.tsq"));
    bytes[bytes.size() / 2] ^= 1;

    Open(folder.Write(u"job.tsq", bytes));

    EXPECT_THAT(Notice(), HasSubstr("The file is damaged."));
}

TEST_F(NoticesTest, AProjectOfALaterVersionIsTold)
{
    std::string bytes = ContentOf(ProjectFile(u"whole.tsq"));
    bytes[8] = 2;

    Open(folder.Write(u"job.tsq", bytes));

    EXPECT_THAT(Notice(), HasSubstr("It was saved by another version of Tessarine."));
}

TEST_F(NoticesTest, AProjectOfAnotherKindIsToldFromTheRecentFilesToo)
{
    const String path = ProjectFile(u"job.tsq");
    Open(path);
    folder.Write(u"job.tsq", "not a project");

    The<QAction>("mnuRecent").menu()->actions().at(0)->trigger();

    EXPECT_EQ(Notice(), "The project " + ToUtf8(path) + " could not be opened. It is not a Tessarine project.");
    EXPECT_THAT(messages.Messages(), IsEmpty());
}

TEST_F(NoticesTest, WhatAMessageHasToldIsNotToldAgain)
{
    Open(folder.PathOf(u"gone.tsq"));

    EXPECT_EQ(messages.Messages().size(), 1U);
    EXPECT_EQ(Notice(), "");
}

TEST_F(NoticesTest, OpeningAProjectEndsTheNoticeOfOneThatFailed)
{
    Open(folder.Write(u"broken.tsq", "not a project"));
    ASSERT_NE(Notice(), "");

    Open(ProjectFile(u"job.tsq"));

    EXPECT_EQ(Notice(), "");
}

TEST_F(NoticesTest, TheJobOfTheLastSessionThatCannotBeReadIsTold)
{
    ASSERT_TRUE(CurrentProject->FindAndReplaceList);
    const String path = folder.Write(u"data/Default.tsq", "not a project");
    std::int32_t error = 0;
    ASSERT_FALSE(CurrentProject->LoadProject(path, error));

    Window();

    EXPECT_EQ(Notice(), "The job of the last session could not be read. It is not a Tessarine project.");
}

TEST_F(NoticesTest, TheErrorLogOpensFromTheStrip)
{
    Open(folder.Write(u"broken.tsq", "not a project"));

    Click("cmdErrorLog");

    EXPECT_THAT(shell.Opened(), testing::ElementsAre(ErrorLogPath()));
}

TEST_F(NoticesTest, TheNewestNoticeIsShownAndTheOthersAreCounted)
{
    Open(folder.Write(u"broken.tsq", "not a project"));
    Import(folder.Write(u"two.csv", "one,two\r\n"));

    EXPECT_THAT(Notice(), HasSubstr("two.csv"));
    EXPECT_EQ(More(), "More notices: 1");

    Click("cmdCloseNotice");
    EXPECT_THAT(Notice(), HasSubstr("broken.tsq"));
    EXPECT_EQ(More(), "");

    Click("cmdCloseNotice");
    EXPECT_EQ(Notice(), "");
}

TEST_F(NoticesTest, TheStripIsReachedAndClosedByKeys)
{
    Open(folder.Write(u"broken.tsq", "not a project"));
    Window().activateWindow();
    The("SSTab1").setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(QApplication::focusWidget(), &The("cmdCloseNotice"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &The("cmdErrorLog"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &The("lblNotice"));

    The("cmdCloseNotice").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(Notice(), "");
    EXPECT_EQ(The("cmdCloseNotice").accessibleName(), "Close this notice");
}

TEST_F(NoticesTest, ANoticeFollowsAChangeOfLanguage)
{
    Open(folder.Write(u"broken.tsq", "not a project"));

    CurrentLanguageFile = u"German.lng";
    Window().LoadLng();

    EXPECT_THAT(Notice(), HasSubstr("Es ist kein Tessarine-Projekt."));
    EXPECT_EQ(The<QPushButton>("cmdErrorLog").text().toStdString(), "Fehlerprotokoll anzeigen");
}

TEST_F(NoticesTest, ALongPathDoesNotWidenTheWindow)
{
    Window();
    const int before = Window().minimumSizeHint().width();

    Open(folder.Write(String(10, u'a') + u"/" + String(140, u'b') + u".tsq", "not a project"));

    ASSERT_THAT(Notice(), HasSubstr(std::string(140, 'b')));
    EXPECT_EQ(Window().minimumSizeHint().width(), before);
}

// Lists.

TEST_F(NoticesTest, AListWithOtherColumnsIsToldWithTheirNumber)
{
    const String path = folder.Write(u"list.csv", "one,two\r\n");

    Import(path);

    EXPECT_EQ(Notice(), "The list " + ToUtf8(path) + " could not be loaded. Number of its columns: 2. A list has 18.");
    EXPECT_EQ(messages.Messages().size(), 1U) << "the message that has always been shown";
    EXPECT_FALSE(The("cmdErrorLog").isVisible()) << "the log knows nothing of it";
}

TEST_F(NoticesTest, AListWithAnotherHeadIsToldWithItsColumn)
{
    std::string headers = Headers();
    headers.replace(headers.find("Replace With"), 12, "Put instead");

    Import(folder.Write(u"list.tab", headers));

    EXPECT_THAT(Notice(), HasSubstr("Column 2 is headed “Put instead”; it must be “Replace With”."));
}

TEST_F(NoticesTest, AListOfAnotherKindIsTold)
{
    Import(folder.Write(u"list.xls", "no workbook at all"));

    EXPECT_THAT(Notice(), HasSubstr("could not be loaded. "));
    EXPECT_TRUE(The("cmdErrorLog").isVisible());
}

TEST_F(NoticesTest, AListWithTooManyRowsIsTold)
{
    std::string content = Headers();
    for (int row = 0; row < 32767; ++row)
        content += "a\tb\r\n";

    Import(folder.Write(u"list.tab", content));

    EXPECT_THAT(Notice(), HasSubstr("It has more than 32,767 rows."));
}

TEST_F(NoticesTest, AListOfTheFormThatCannotBeReadIsToldAtTheStart)
{
    Window();
    The<QRadioButton>("optLoad(0)").setChecked(true);
    ShowTab(0);
    Type("txtLoadsearch", ToQt(folder.Write(u"list.csv", "one,two\r\n")));

    Choose("mnuStartSearching");

    EXPECT_THAT(Notice(), HasSubstr("Number of its columns: 2."));
}

TEST_F(NoticesTest, AnImportEndsTheNoticeOfOneThatFailed)
{
    Import(folder.Write(u"bad.csv", "one,two\r\n"));
    ASSERT_NE(Notice(), "");

    Import(folder.Write(u"good.tab", Headers()));

    EXPECT_EQ(Notice(), "");
}

// Saving.

TEST_F(NoticesTest, ASaveIntoAFolderThatHasGoneKeepsTheMark)
{
    TypeStartFolder("/typed");
    const String path = folder.PathOf(u"gone/job.tsq");

    Save("menuSave", path);

    EXPECT_EQ(messages.Messages().size(), 1U);
    EXPECT_TRUE(Window().IsModifed());
    EXPECT_EQ(Notice(), "The project was not saved as " + ToUtf8(path) + ". Its folder does not exist.");

    folder.MakeFolder(u"gone");
    Choose("menuSave");

    EXPECT_TRUE(FileExists(path));
    EXPECT_FALSE(Window().IsModifed());
    EXPECT_EQ(Notice(), "");
}

TEST_F(NoticesTest, AProjectWithTooManyPairsKeepsTheMark)
{
    std::vector<Pair> pairs(32768, {u"a", u"b"});
    EditPairs(pairs);

    Save("menuSaveAs", folder.PathOf(u"job.tsq"));

    EXPECT_TRUE(Window().IsModifed());
    EXPECT_THAT(Notice(), HasSubstr("A project holds at most 32,767 pairs."));
}

TEST_F(NoticesTest, AJobThatCannotBeSavedKeepsTheWindowOpen)
{
    TypeStartFolder("/typed");
    messages.Next(MessageAnswer::Yes);
    shell.NextFile(folder.PathOf(u"gone/job.tsq"));

    Window().close();

    EXPECT_TRUE(Window().isVisible());
    EXPECT_THAT(Notice(), HasSubstr("was not saved"));

    messages.Next(MessageAnswer::Yes);  // it has a name by now
    Window().close();
    EXPECT_TRUE(Window().isVisible());
}

// Lists of files.

class FileListNoticeTest : public NoticesTest
{
protected:
    String Deck(StringView name)
    {
        String path = folder.PathOf(name);
        test::Deck().Slide(test::Title(u"Fabrikam")).WriteTo(NativePath(path));
        return path;
    }

    /// Starts a search over the files of a list.
    void StartOver(const std::string& list)
    {
        EditPairs({{u"Fabrikam", u""}});
        The<QRadioButton>("optFileProcess(1)").setChecked(true);
        ShowTab(1);
        Type("txtGetFileName", ToQt(folder.Write(u"files.txt", list)));
        messages.Next(MessageAnswer::No);
        Click("cmdStartReplacing(1)");
    }
};

TEST_F(FileListNoticeTest, LinesThatEndInLineFeedsAreToldWhereNothingWasFound)
{
    StartOver(ToUtf8(Deck(u"a.pptx")) + "\n" + ToUtf8(Deck(u"b.pptx")) + "\nmissing.pptx\n");

    EXPECT_EQ(
        ToUtf8(messages.Messages().front().text),
        "There are no files to process.\n\nThe lines of the list end in LF alone. Each line must end in CR LF, as "
        "Windows writes it.");
    EXPECT_EQ(Notice(), "Files that were not found because lines of " + ToUtf8(folder.PathOf(u"files.txt")) +
                            " end in LF: 2. Each line must end in CR LF, as Windows writes it.");
}

TEST_F(FileListNoticeTest, SomeLinesThatEndInLineFeedsAreToldToo)
{
    StartOver(ToUtf8(Deck(u"a.pptx")) + "\r\n" + ToUtf8(Deck(u"b.pptx")) + "\n" + ToUtf8(Deck(u"c.pptx")));

    EXPECT_EQ(CurrentProject->FilesToProcess.size(), 1U);
    EXPECT_THAT(Notice(), HasSubstr("end in LF: 2."));
}

TEST_F(FileListNoticeTest, AListWithItsLineEndsPutRightEndsTheNotice)
{
    const std::string path = ToUtf8(Deck(u"a.pptx"));
    StartOver(path + "\n" + path);
    ASSERT_NE(Notice(), "");
    messages.Next(MessageAnswer::No);

    StartOver(path + "\r\n" + path);

    EXPECT_EQ(Notice(), "");
}

TEST_F(FileListNoticeTest, AListOfMissingFilesHasNoHintOfItsLines)
{
    StartOver("missing.pptx\nmissing too.pptx\n");

    EXPECT_EQ(messages.Messages().front().text, GlobalMsg(u"1052"));
    EXPECT_EQ(Notice(), "");
}

TEST_F(FileListNoticeTest, TheTipOfTheListTellsOfItsLineEnds)
{
    EXPECT_THAT(The("txtGetFileName").toolTip().toStdString(), HasSubstr("CR LF"));
}

}  // namespace
}  // namespace tessarine
