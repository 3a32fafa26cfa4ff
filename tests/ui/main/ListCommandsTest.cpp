#include "ui/main/MainWindowTest.h"

#include "files/Files.h"
#include "platform/ProgramFolder.h"

// Import and export of the list of pairs, and what the file dialog that all commands share keeps from its last use.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const String listFilter = u"CSV Files|*.csv|TAB Files|*.Tab|Excel File|*.xls";

class ListCommandsTest : public MainWindowTest
{
protected:
    /// A list file with these texts to find, each with the notes as its location.
    String ListFile(StringView name, const std::vector<String>& finds)
    {
        const ProjectOwner project(powerPoint.Provider());
        for (const String& find : finds) {
            const auto setting = std::make_shared<OptionSetting>();
            setting->InNotes = true;
            project->FindAndReplaceList->Add(find, u"new " + find, setting, project.get());
        }
        String path = folder.PathOf(name);
        project->FindAndReplaceList->ExportsList(path);
        return path;
    }

    std::vector<std::string> FindsIn(const String& path)
    {
        FindAndReplaceItems list;
        if (!list.ImportList(path))
            return {"<not imported>"};
        std::vector<std::string> texts;
        for (const auto& item : list.NewEnum())
            texts.push_back(ToUtf8(item->FindWhat));
        return texts;
    }
};

TEST_F(ListCommandsTest, ImportAsksForAListFileUnderAnEmptyName)
{
    Window();
    shell.NextFile(std::nullopt);

    Choose("mnuImportList");

    const auto& [dialog, isSave] = shell.FileDialogs().front();
    EXPECT_FALSE(isSave);
    EXPECT_EQ(dialog.Filter, listFilter);
    EXPECT_EQ(dialog.FileName, u"");
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"107"));
}

TEST_F(ListCommandsTest, ACancelledImportDoesNothing)
{
    EditPairs({{u"kept", u""}});
    shell.NextFile(std::nullopt);

    Choose("mnuImportList");

    EXPECT_THAT(Finds(), ElementsAre("kept"));
    EXPECT_THAT(messages.Pointers(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ListCommandsTest, ImportReplacesTheWholeListAndShowsItsFirstPair)
{
    EditPairs({{u"old", u""}, {u"older", u""}, {u"oldest", u""}});
    ClickCell(3, ItemColumn::Number);
    shell.NextFile(ListFile(u"list.csv", {u"one", u"two"}));

    Choose("mnuImportList");

    EXPECT_THAT(Finds(), ElementsAre("one", "two"));
    EXPECT_EQ(Grid().Rows(), 3);
    EXPECT_EQ(Cell(2, ItemColumn::FindWhat), "two");
    EXPECT_EQ(Cell(2, ItemColumn::ReplaceWith), "new two");
    EXPECT_EQ(Grid().Row(), 1);
    EXPECT_THAT(CheckedLocations(), ElementsAre(7));
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(messages.Pointers(), ElementsAre(MousePointer::Hourglass, MousePointer::Default));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ListCommandsTest, AnImportDoesNotMarkTheJob)
{
    EditPairs({{u"old", u""}});
    shell.NextFile(ListFile(u"list.csv", {u"one"}));

    Choose("mnuImportList");

    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListCommandsTest, ImportedPairsCanBeEdited)
{
    EditPairs({});
    ASSERT_FALSE(IsEnabled("grdItems"));
    shell.NextFile(ListFile(u"list.csv", {u"one"}));
    Choose("mnuImportList");

    ASSERT_TRUE(IsEnabled("grdItems"));
    TypeInCell(1, ItemColumn::FindWhat, "typed");

    EXPECT_THAT(Finds(), ElementsAre("typed"));
    EXPECT_TRUE(Window().IsModifed());
}

TEST_F(ListCommandsTest, AnImportOfHeadersAloneEmptiesTheList)
{
    EditPairs({{u"old", u""}});
    shell.NextFile(ListFile(u"list.csv", {}));

    Choose("mnuImportList");

    EXPECT_THAT(Finds(), IsEmpty());
    EXPECT_EQ(Grid().Rows(), 1);
    EXPECT_FALSE(IsEnabled("cmdDelete"));
    EXPECT_FALSE(IsEnabled("lstLookIn"));
    EXPECT_TRUE(IsEnabled("cmdAdd"));
}

TEST_F(ListCommandsTest, AFailedImportLeavesGridAndListUntouched)
{
    EditPairs({{u"kept", u""}, {u"kept too", u""}});
    ClickCell(2, ItemColumn::Number);
    const auto list = CurrentProject->FindAndReplaceList;
    shell.NextFile(folder.Write(u"other.csv", "one,two\r\n"));

    Choose("mnuImportList");

    EXPECT_THAT(messages.Messages(), ElementsAre(Message{GlobalMsg(u"1056"), MessageIcon::Exclamation}));
    EXPECT_EQ(CurrentProject->FindAndReplaceList, list);
    EXPECT_THAT(Finds(), ElementsAre("kept", "kept too"));
    EXPECT_EQ(Cell(1, ItemColumn::FindWhat), "kept");
    EXPECT_EQ(Grid().Row(), 2);
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
}

TEST_F(ListCommandsTest, ExportWritesTheListOfTheProject)
{
    EditPairs({{u"one", u"1"}, {u"two", u"2"}});
    const String path = folder.PathOf(u"new.csv");
    shell.NextFile(path);

    Choose("mnuExportList");

    const auto& [dialog, isSave] = shell.FileDialogs().front();
    EXPECT_TRUE(isSave);
    EXPECT_EQ(dialog.Filter, listFilter);
    EXPECT_EQ(ToUtf8(dialog.DialogTitle), English(u"frmMain", u"107"));
    EXPECT_THAT(FindsIn(path), ElementsAre("one", "two"));
    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(messages.Pointers(), ElementsAre(MousePointer::Hourglass, MousePointer::Default));
    EXPECT_FALSE(Window().IsModifed());
}

TEST_F(ListCommandsTest, ACancelledExportWritesNothing)
{
    EditPairs({{u"one", u"1"}});
    shell.NextFile(std::nullopt);

    Choose("mnuExportList");

    EXPECT_THAT(messages.Messages(), IsEmpty());
    EXPECT_THAT(messages.Pointers(), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ListCommandsTest, ExportOverAFileAsksAndOnYesReplacesIt)
{
    EditPairs({{u"one", u"1"}});
    const String path = ListFile(u"list.csv", {u"old"});
    shell.NextFile(path);
    messages.Next(MessageAnswer::Yes);

    Choose("mnuExportList");

    EXPECT_THAT(messages.Messages(),
                ElementsAre(Message{u"The file " + path + u" already exists. Do you want to overwrite it?",
                                    MessageIcon::None, MessageButtons::YesNo}));
    EXPECT_THAT(FindsIn(path), ElementsAre("one"));
}

TEST_F(ListCommandsTest, ExportOverAFileDoesNothingOnNo)
{
    EditPairs({{u"one", u"1"}});
    const String path = folder.Write(u"list.csv", "as it was");
    shell.NextFile(path);
    messages.Next(MessageAnswer::No);

    Choose("mnuExportList");

    EXPECT_EQ(messages.Messages().size(), 1U);
    EXPECT_EQ(ContentOf(path), "as it was");
    EXPECT_EQ(messages.Pointers().back(), MousePointer::Default);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ListCommandsTest, EveryPlaceForTheFileInTheQuestionIsFilled)
{
    EditPairs({{u"one", u"1"}});
    folder.Write(u"program/Languages/English.lng", "[Global Msg]\n1053=%s? Really %s?\n");
    SetProgramFolder(folder.PathOf(u"program"));
    const String path = folder.Write(u"%s.csv");
    shell.NextFile(path);
    messages.Next(MessageAnswer::No);

    Choose("mnuExportList");

    EXPECT_EQ(messages.Messages().front().text, path + u"? Really " + path + u"?");
}

TEST_F(ListCommandsTest, ExportProposesTheFileOfTheLastDialog)
{
    EditPairs({{u"one", u"1"}});
    const String path = ListFile(u"list.csv", {u"old"});
    shell.NextFile(path);
    Choose("mnuImportList");

    shell.NextFile(std::nullopt);
    Choose("mnuExportList");
    shell.NextFile(std::nullopt);
    Choose("mnuImportList");

    EXPECT_EQ(shell.FileDialogs().at(1).properties.FileName, path);
    EXPECT_EQ(shell.FileDialogs().at(2).properties.FileName, u"");
}

TEST_F(ListCommandsTest, ExtensionAndFlagsOfOpeningAProjectStayInForce)
{
    EditPairs({{u"one", u"1"}});
    shell.NextFile(std::nullopt);
    Choose("mnuOpen");
    shell.NextFile(std::nullopt);
    Choose("mnuImportList");
    shell.NextFile(std::nullopt);
    Choose("mnuExportList");

    for (const auto& [dialog, isSave] : shell.FileDialogs()) {
        EXPECT_EQ(dialog.DefaultExt, u"tsq");
        EXPECT_EQ(dialog.Flags, FileDialogFlag::FileMustExist);
    }
    EXPECT_EQ(shell.FileDialogs().size(), 3U);
}

TEST_F(ListCommandsTest, BeforeAProjectWasOpenedNoExtensionIsInForce)
{
    EditPairs({{u"one", u"1"}});
    shell.NextFile(std::nullopt);

    Choose("mnuExportList");

    EXPECT_EQ(shell.FileDialogs().front().properties.DefaultExt, u"");
    EXPECT_EQ(shell.FileDialogs().front().properties.Flags, 0);
}

}  // namespace
}  // namespace tessarine
