#include "ui/main/MainWindowTest.h"

#include <QRadioButton>

#include "platform/NativePath.h"
#include "support/Deck.h"
#include "support/FailingFolders.h"
#include "ui/run/frmProcessingDocuments.h"

// What a start command tests before it asks whether to begin, and the question itself.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* startReplacing = "cmdStartReplacing(0)";
constexpr const char* startSearching = "cmdStartReplacing(1)";

class ValidationTest : public MainWindowTest
{
protected:
    void Check(const char* option) { The<QRadioButton>(option).setChecked(true); }

    /// The list comes from a file.
    void UseListFile(const String& path)
    {
        Check("optLoad(0)");
        ShowTab(0);
        Type("txtLoadsearch", ToQt(path));
    }

    void UseFolder(const String& path)
    {
        Check("optFileProcess(0)");
        ShowTab(1);
        Type("txtStartFolder", ToQt(path));
    }

    void UseFileList(const String& path)
    {
        Check("optFileProcess(1)");
        ShowTab(1);
        Type("txtGetFileName", ToQt(path));
    }

    String ListFile(StringView name, const std::vector<String>& finds)
    {
        const ProjectOwner project(powerPoint.Provider());
        for (const String& find : finds)
            project->FindAndReplaceList->Add(find, u"", std::make_shared<OptionSetting>(), project.get());
        String path = folder.PathOf(name);
        project->FindAndReplaceList->ExportsList(path);
        return path;
    }

    void WriteDeck(StringView name)
    {
        test::Deck().Slide(test::Title(u"Fabrikam")).WriteTo(NativePath(folder.PathOf(name)));
    }

    /// Expects one message with the exclamation icon.
    void ExpectComplaint(const String& key)
    {
        EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(key), MessageIcon::Exclamation}));
    }

    /// Starts from the last tab with the focus on its own control, so that any move shows.
    void StartFromTheLastTab()
    {
        ShowTab(2);
        The("txtRevisonProperty").setFocus();
        Choose("mnuStartSearching");
    }

    void ExpectMovedTo(int tab, const char* control)
    {
        EXPECT_EQ(Tab(), tab);
        EXPECT_TRUE(The(control).hasFocus());
    }

    void ExpectNotMoved()
    {
        EXPECT_EQ(Tab(), 2);
        EXPECT_TRUE(The("txtRevisonProperty").hasFocus());
    }
};

// The list of pairs.

TEST_F(ValidationTest, AnEmptyPathOfTheListFileLeadsToItsButton)
{
    UseListFile({});

    StartFromTheLastTab();

    ExpectComplaint(u"1043");
    ExpectMovedTo(0, "cmdBrowse1");
}

TEST_F(ValidationTest, AListFileThatIsNotThereLeadsToItsButton)
{
    UseListFile(folder.PathOf(u"gone.csv"));

    StartFromTheLastTab();

    ExpectComplaint(u"1044");
    ExpectMovedTo(0, "cmdBrowse1");
}

TEST_F(ValidationTest, AListFileWithoutADotCountsAsNotThere)
{
    UseListFile(folder.Write(u"list"));
    ASSERT_EQ(folder.Path().find(u'.'), String::npos);

    StartFromTheLastTab();

    ExpectComplaint(u"1044");
}

TEST_F(ValidationTest, AListFileWithAnotherExtensionLeadsToItsButton)
{
    UseListFile(folder.Write(u"list.xlsx"));

    StartFromTheLastTab();

    ExpectComplaint(u"1045");
    ExpectMovedTo(0, "cmdBrowse1");
}

TEST_F(ValidationTest, AListFileThatCannotBeImportedLeadsToItsButton)
{
    UseListFile(folder.Write(u"list.csv", "one,two\r\n"));

    StartFromTheLastTab();

    ExpectComplaint(u"1056");
    ExpectMovedTo(0, "cmdBrowse1");
}

TEST_F(ValidationTest, AListFileOfHeadersAloneLeadsToItsButton)
{
    UseListFile(ListFile(u"list.csv", {}));

    StartFromTheLastTab();

    ExpectComplaint(u"1055");
    ExpectMovedTo(0, "cmdBrowse1");
}

TEST_F(ValidationTest, TheExtensionOfAListFileMayBeInAnyCase)
{
    const std::string bytes = ContentOf(ListFile(u"list.xls", {u"a"}));
    UseListFile(folder.Write(u"list.Xls", bytes));
    UseFolder({});

    Click(startSearching);

    ExpectComplaint(u"1046");
}

TEST_F(ValidationTest, AnEmptyGridLeadsToTheAddButton)
{
    EditPairs({});

    StartFromTheLastTab();

    ExpectComplaint(u"1055");
    ExpectMovedTo(0, "cmdAdd");
}

TEST_F(ValidationTest, TheListOfTheFileIsNotKept)
{
    EditPairs({{u"kept", u""}});
    UseListFile(ListFile(u"list.csv", {u"a"}));
    UseFolder({});

    Click(startSearching);

    EXPECT_THAT(Finds(), ElementsAre("kept"));
}

// The files.

TEST_F(ValidationTest, AnEmptyFolderLeadsToItsButton)
{
    EditPairs({{u"a", u""}});
    UseFolder({});

    StartFromTheLastTab();

    ExpectComplaint(u"1046");
    ExpectMovedTo(1, "cmdBrowse2");
}

TEST_F(ValidationTest, AMissingFolderLeavesTheUserWhereHeIs)
{
    EditPairs({{u"a", u""}});
    UseFolder(folder.PathOf(u"gone"));

    StartFromTheLastTab();

    ExpectComplaint(u"1047");
    ExpectNotMoved();
}

TEST_F(ValidationTest, AFileIsNoFolder)
{
    EditPairs({{u"a", u""}});
    UseFolder(folder.Write(u"file.txt"));

    StartFromTheLastTab();

    ExpectComplaint(u"1047");
}

TEST_F(ValidationTest, AnEmptyPathOfTheFileListLeadsToItsButton)
{
    EditPairs({{u"a", u""}});
    UseFileList({});

    StartFromTheLastTab();

    ExpectComplaint(u"1049");
    ExpectMovedTo(1, "cmdBrowse3");
}

TEST_F(ValidationTest, AFileListThatIsNotThereLeadsToItsButton)
{
    EditPairs({{u"a", u""}});
    UseFileList(folder.PathOf(u"gone.txt"));

    StartFromTheLastTab();

    ExpectComplaint(u"1050");
    ExpectMovedTo(1, "cmdBrowse3");
}

TEST_F(ValidationTest, AFileListOfAnotherTypeLeavesTheUserWhereHeIs)
{
    EditPairs({{u"a", u""}});
    UseFileList(folder.Write(u"files.csv"));

    StartFromTheLastTab();

    ExpectComplaint(u"1051");
    ExpectNotMoved();
}

TEST_F(ValidationTest, TheListIsTestedBeforeTheFiles)
{
    EditPairs({});
    UseFolder({});

    Click(startSearching);

    ExpectComplaint(u"1055");
}

// The start.

TEST_F(ValidationTest, ARefusedStartHasFilledTheProject)
{
    EditPairs({});
    UseFolder(u"/typed");

    Click(startReplacing);

    EXPECT_EQ(Options().FileToProcessFolderPath, u"/typed");
    EXPECT_FALSE(IsSearchRun);
    Choose("mnuStartSearching");
    EXPECT_TRUE(IsSearchRun);
    Choose("mnuStartReplacing");
    EXPECT_FALSE(IsSearchRun);
    Click(startSearching);
    EXPECT_TRUE(IsSearchRun);
}

TEST_F(ValidationTest, AFolderWithoutPresentationsLeadsToTheFiles)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks/below");
    WriteDeck(u"decks/below/deck.pptx");
    folder.Write(u"decks/readme.txt");
    UseFolder(folder.PathOf(u"decks"));
    ShowTab(2);

    Choose("mnuStartSearching");

    ExpectComplaint(u"1052");
    EXPECT_EQ(Tab(), 1);
}

TEST_F(ValidationTest, PresentationsInTheFolderLeadToTheQuestion)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks");
    WriteDeck(u"decks/first.pptx");
    WriteDeck(u"decks/second.PPTX");
    folder.Write(u"decks/readme.txt");
    UseFolder(folder.PathOf(u"decks"));
    messages.Next(MessageAnswer::No);

    Click(startReplacing);

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1001"), MessageIcon::Exclamation,
                                                         MessageButtons::YesNo, u"Start Processing", true,
                                                         u"Replace and save: 2 presentation(s)\nFolder: " +
                                                             folder.PathOf(u"decks") + u"\nNo backups are made."}));
    EXPECT_THAT(CurrentProject->FilesToProcess,
                testing::UnorderedElementsAre(folder.PathOf(u"decks/first.pptx"), folder.PathOf(u"decks/second.PPTX")));
}

TEST_F(ValidationTest, TheQuestionSaysWhatASearchWillDo)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks");
    WriteDeck(u"decks/a.pptx");
    UseFolder(folder.PathOf(u"decks"));
    ClickBox("chkIncludesubfolders");
    messages.Next(MessageAnswer::No);

    Click(startSearching);

    EXPECT_EQ(messages.Messages().front().details,
              u"Search, without a change: 1 presentation(s)\nFolder with its subfolders: " + folder.PathOf(u"decks"));
}

TEST_F(ValidationTest, TheQuestionTellsOfBackupsAndReadOnlyFiles)
{
    EditPairs({{u"Fabrikam", u""}});
    for (const char16_t* name : {u"a.pptx", u"b.pptx"})
        WriteDeck(name);
    SetMode(folder.PathOf(u"b.pptx"), 0444);
    UseFileList(
        folder.Write(u"files.txt", ToUtf8(folder.PathOf(u"a.pptx") + u"\r\n" + folder.PathOf(u"b.pptx")) + "\r\n"));
    ShowTab(2);
    ClickBox("chkBackupMode");
    messages.Next(MessageAnswer::No);
    messages.Next(MessageAnswer::No);

    Click(startReplacing);
    ClickBox("chkReadOnlyFile");
    Click(startReplacing);
    SetMode(folder.PathOf(u"b.pptx"), 0644);

    const String plan = u"Replace and save: 2 presentation(s)\nFiles listed in: " + folder.PathOf(u"files.txt") +
                        u"\nA backup of each file is made first.\n";
    ASSERT_EQ(messages.Messages().size(), 2U);
    EXPECT_EQ(messages.Messages()[0].details, plan + u"Read-only files that are left out: 1");
    EXPECT_EQ(messages.Messages()[1].details, plan + u"Read-only files that are processed all the same: 1");
}

TEST_F(ValidationTest, TheQuestionSaysNothingOfPowerPointWhereTheBuiltInEngineRuns)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks");
    WriteDeck(u"decks/a.pptx");
    UseFolder(folder.PathOf(u"decks"));
    messages.Next(MessageAnswer::No);
    const bool chosen = std::exchange(IsBuiltInEngine, true);

    Click(startReplacing);
    IsBuiltInEngine = chosen;

    EXPECT_EQ(messages.Messages().front().text, u"Do you want to continue?");
}

TEST_F(ValidationTest, BackupsInTheWayAreNamedInTheQuestion)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks");
    for (const char16_t* name : {u"decks/a.pptx", u"decks/b.ppt", u"decks/c.pptx"})
        WriteDeck(name);
    folder.Write(u"decks/a..bak");
    folder.Write(u"decks/b.bak");
    UseFolder(folder.PathOf(u"decks"));
    messages.Next(MessageAnswer::No);
    messages.Next(MessageAnswer::No);

    Click(startReplacing);
    ShowTab(2);
    ClickBox("chkBackupMode");
    Click(startReplacing);

    ASSERT_EQ(messages.Messages().size(), 2U);
    EXPECT_EQ(messages.Messages()[0].text, GlobalMsg(u"1001"));
    EXPECT_EQ(messages.Messages()[1].text, GlobalMsg(u"1001") + u"\n\n2 backup(s) of an earlier run will be replaced.");
}

#ifndef _WIN32  // where nothing lets the reading of a folder fail

TEST_F(ValidationTest, AFolderThatCannotBeReadToItsEndIsTold)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks");
    WriteDeck(u"decks/a.pptx");
    UseFolder(folder.PathOf(u"decks"));
    const FailingFolders failing(1);

    Click(startReplacing);

    EXPECT_THAT(
        messages.Messages(),
        ElementsAre(Message{u"1 folder(s) could not be read to the end. Their files are left out; the error log "
                            u"names the folders.",
                            MessageIcon::Exclamation},
                    Message{GlobalMsg(u"1052"), MessageIcon::Exclamation}));
}

#endif

TEST_F(ValidationTest, SubfoldersCountWhenTheirBoxIsChecked)
{
    EditPairs({{u"Fabrikam", u""}});
    folder.MakeFolder(u"decks/below");
    WriteDeck(u"decks/below/deck.pptx");
    UseFolder(folder.PathOf(u"decks"));
    ClickBox("chkIncludesubfolders");
    messages.Next(MessageAnswer::No);

    Click(startReplacing);

    EXPECT_EQ(messages.Messages().front().text, GlobalMsg(u"1001"));
    EXPECT_THAT(CurrentProject->FilesToProcess, ElementsAre(folder.PathOf(u"decks/below/deck.pptx")));
}

TEST_F(ValidationTest, FilesOfAFileListLeadToTheQuestion)
{
    EditPairs({{u"Fabrikam", u""}});
    WriteDeck(u"deck.pptx");
    UseFileList(folder.Write(u"files.TXT", ToUtf8(folder.PathOf(u"deck.pptx")) + "\r\n"));
    messages.Next(MessageAnswer::No);

    Click(startSearching);

    EXPECT_EQ(messages.Messages().front().text, GlobalMsg(u"1001"));
}

TEST_F(ValidationTest, NoToTheQuestionLeavesEverythingAlone)
{
    EditPairs({{u"Fabrikam", u"Contoso"}});
    folder.MakeFolder(u"decks");
    WriteDeck(u"decks/deck.pptx");
    const std::string before = ContentOf(folder.PathOf(u"decks/deck.pptx"));
    UseFolder(folder.PathOf(u"decks"));
    powerPoint.StartByUser();
    CurrentProject->IsProcessCancel = true;
    messages.Next(MessageAnswer::No);

    Click(startReplacing);

    EXPECT_EQ(powerPoint.Running(), 1);
    EXPECT_EQ(frmProcessingDocuments::Loaded(), nullptr);
    EXPECT_EQ(ContentOf(folder.PathOf(u"decks/deck.pptx")), before);
    EXPECT_THAT(Finds(), ElementsAre("Fabrikam"));
    EXPECT_EQ(Options().FileToProcessFolderPath, folder.PathOf(u"decks")) << "the form has reached the project";
    EXPECT_FALSE(CurrentProject->IsProcessCancel);
    EXPECT_THAT(Log(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
