#include "batch/ListFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/BatchCall.h"
#include "batch/Locations.h"
#include "model/ListColumns.h"
#include "model/Project.h"
#include "model/SearchLocations.h"
#include "support/ErrorLogRecorder.h"
#include "support/FakeExcel.h"
#include "support/MessageRecorder.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t inNotes = 10;
constexpr std::int32_t inSlides = 15;
constexpr std::int32_t matchCase = 17;
constexpr std::int32_t matchWholeWord = 18;

class ListFilesTest : public testing::Test
{
protected:
    ListFilesTest()
    {
        for (std::int32_t column = 1; column <= ListColumnCount; ++column)
            sheet_.cells[{1, column}] = String(ListHeaders[static_cast<std::size_t>(column) - 1]);
    }

    /// Adds a row with these columns on.
    void Row(const String& find, const String& with, const std::vector<std::int32_t>& on = {inSlides})
    {
        ++row_;
        sheet_.cells[{row_, 1}] = find;
        sheet_.cells[{row_, 2}] = with;
        for (const std::int32_t column : on)
            sheet_.cells[{row_, column}] = true;
    }

    /// The call with the list as its list file.
    BatchCall Call(Command command = Command::Replace)
    {
        excel_.Put(path_, sheet_);
        BatchCall call;
        call.command = command;
        call.list = path_;
        return call;
    }

    /// Why the sheet is not taken as a list.
    std::string Refusal()
    {
        excel_.Put(path_, sheet_);
        try {
            LoadList(path_);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, 5);
            return ToUtf8(failure.description);
        }
        return "taken";
    }

    /// The pairs that the call gives a project, with their places and switches.
    std::vector<std::string> Taken(const BatchCall& call)
    {
        const ProjectOwner project;
        notes_ = TakeListPairs(*project, call);
        std::vector<std::string> lines;
        for (const auto& item : project->FindAndReplaceList->NewEnum()) {
            EXPECT_EQ(item->Project, project.get());
            std::string line = ToUtf8(item->FindWhat + u" -> " + item->ReplaceWith) + ":";
            for (const SearchLocation& location : SearchLocations)
                line += (*item->OptionSetting).*location.isOn ? std::string(" ") + location.name : "";
            line += item->OptionSetting->MatchCase ? " case" : "";
            line += item->OptionSetting->MatchWholeWord ? " word" : "";
            lines.push_back(line);
        }
        return lines;
    }

    const ErrorLogRecorder log_;
    MessageRecorder messages_;
    const TemporaryFolder folder_;
    FakeExcel excel_;
    const String path_ = folder_.Write(u"pairs.xls");
    FakeSheet sheet_;
    std::int32_t row_ = 1;
    std::vector<std::string> notes_;
};

// --- Taking pairs ------------------------------------------------------------------------------------------------

TEST_F(ListFilesTest, PairsKeepTheirPlacesAndSwitches)
{
    Row(u"cat", u"dog", {inSlides, matchCase});
    Row(u"old", u"", {inNotes, matchWholeWord});

    EXPECT_THAT(Taken(Call()), ElementsAre("cat -> dog: slides case", "old -> : notes word"));
    EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(ListFilesTest, PlacesOfTheCallReplaceThoseOfThePairs)
{
    Row(u"cat", u"dog", {inSlides, matchCase});
    Row(u"old", u"", {});
    BatchCall call = Call();
    SwitchOn(call.setting, "notes,shapes");

    EXPECT_THAT(Taken(call), ElementsAre("cat -> dog: shapes notes case", "old -> : shapes notes"));
    EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(ListFilesTest, SwitchesOfTheCallHoldForEveryPair)
{
    Row(u"cat", u"dog", {inSlides, matchCase});
    Row(u"old", u"new", {inNotes});
    BatchCall call = Call();
    call.setting.MatchWholeWord = true;

    EXPECT_THAT(Taken(call), ElementsAre("cat -> dog: slides case word", "old -> new: notes word"));
}

TEST_F(ListFilesTest, AFindTakesNoNewTexts)
{
    Row(u"cat", u"a cat");

    EXPECT_THAT(Taken(Call(Command::Find)), ElementsAre("cat -> : slides"));
}

TEST_F(ListFilesTest, RowsWithoutATextAreLeftOutAndNoted)
{
    Row(u"", u"x");
    Row(u"cat", u"dog");
    Row(u"", u"");

    EXPECT_THAT(Taken(Call()), ElementsAre("cat -> dog: slides"));
    EXPECT_THAT(notes_, ElementsAre("2 rows of the list are left out: no text to look for"));
}

TEST_F(ListFilesTest, PairsWithoutAPlaceAreNoted)
{
    Row(u"cat", u"dog", {});

    EXPECT_THAT(Taken(Call()), ElementsAre("cat -> dog:"));
    EXPECT_THAT(notes_, ElementsAre("1 pair of the list is looked for nowhere: columns 3 to 16 hold no TRUE (--in "
                                    "names places)"));
}

TEST_F(ListFilesTest, AListWithoutPairsIsRefused)
{
    Row(u"", u"x");

    EXPECT_THROW(Taken(Call()), Failure);
}

TEST_F(ListFilesTest, RefusesAnEndlessPairWhereItWouldRun)
{
    Row(u"cat", u"a cat", {inSlides});
    EXPECT_THROW(Taken(Call()), Failure);
    EXPECT_THROW(Taken(Call(Command::JobMake)), Failure);

    BatchCall elsewhere = Call();
    SwitchOn(elsewhere.setting, "hyperlinks");
    EXPECT_THAT(Taken(elsewhere), ElementsAre("cat -> a cat: hyperlinks"));
}

// --- Reasons -----------------------------------------------------------------------------------------------------

TEST_F(ListFilesTest, SaysWhyAListIsNotTakenWhole)
{
    const std::string refused = "can't take the list \"" + ToUtf8(path_) + "\": ";
    EXPECT_EQ(Refusal(), "taken");

    sheet_.cells[{1, 2}] = String(u"With");
    EXPECT_EQ(Refusal(), refused + "its column 2 is headed \"With\", not \"Replace With\"");
    sheet_.cells[{1, 2}] = String(u"Replace With");

    sheet_.columns = 17;
    EXPECT_EQ(Refusal(), refused + "it has 17 columns, and a list of pairs has 18");
    sheet_.columns = 1;
    EXPECT_EQ(Refusal(), refused + "it has 1 column, and a list of pairs has 18");
    sheet_.columns = 0;

    sheet_.rows = 32768;
    EXPECT_EQ(Refusal(), refused + "it has more than 32767 rows");
    sheet_.rows = 0;

    Row(u"cat", u"dog");
    sheet_.cells[{3, 2}] = excel::CellError{42};
    EXPECT_EQ(Refusal(), refused + "row 3 holds an error (such as #N/A) in place of a text");

    excel_.script.Fail("Workbooks.Open", 1004, path_ + u": The file is damaged");
    EXPECT_EQ(Refusal(), refused + "The file is damaged");
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

TEST_F(ListFilesTest, AMissingListIsRefusedWithoutAMessage)
{
    try {
        LoadList(u"gone.xls");
        ADD_FAILURE() << "taken";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.description, u"there is no list \"gone.xls\"");
    }
    EXPECT_THAT(messages_.Messages(), IsEmpty());
}

// --- Converting --------------------------------------------------------------------------------------------------

TEST_F(ListFilesTest, AConversionThatExcelRefusesIsRefused)
{
    Row(u"cat", u"dog");
    excel_.Put(path_, sheet_);
    excel_.script.Fail("Workbook.SaveAs", 1004, u"The disk is full");

    try {
        ConvertList(path_, folder_.PathOf(u"new.csv"));
        ADD_FAILURE() << "converted";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.description,
                  u"can't write the list \"" + folder_.PathOf(u"new.csv") + u"\": The disk is full");
    }
}

TEST_F(ListFilesTest, AConversionTellsWhatDoesNotReadBack)
{
    Row(u"cat", u"dog");
    Row(u"old", u"new");
    excel_.Put(path_, sheet_);
    const String target = folder_.Write(u"new.csv");

    EXPECT_EQ(ConvertList(path_, target).loss, "");

    excel_.script.On("Workbook.SaveAs", [&] { sheet_.cells[{3, 2}] = String(u"other"); });
    excel_.script.On("Workbooks.Open", [&] { excel_.Put(target, sheet_); });
    const ConvertedList converted = ConvertList(path_, target);
    EXPECT_EQ(converted.loss, "pair 2 (\"old\") reads back otherwise");
    EXPECT_EQ(converted.pairs, 2);
}

}  // namespace
}  // namespace tessarine::batch
