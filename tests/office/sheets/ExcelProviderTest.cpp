#include "office/sheets/ExcelProvider.h"

#include <gtest/gtest.h>

#include "files/Files.h"
#include "platform/Failure.h"
#include "support/TemporaryFolder.h"

namespace tessarine::sheets
{

namespace
{

constexpr std::int32_t disconnected = -2147417848;

class ExcelProvider : public testing::Test
{
protected:
    ExcelProvider() { application_->PutDisplayAlerts(false); }

    std::shared_ptr<excel::Workbook> Opened(StringView name, const std::string& content)
    {
        return application_->Workbooks()->Open(folder_.Write(name, content));
    }

    static excel::Value ValueAt(const std::shared_ptr<excel::Workbook>& workbook, std::int32_t row, std::int32_t column)
    {
        return workbook->Sheets()->Item(1)->Cells()->Item(row, column)->Value();
    }

    /// A new workbook with a value in its first cell.
    std::shared_ptr<excel::Workbook> NewWith(const excel::Value& value)
    {
        const auto workbook = application_->Workbooks()->Add();
        workbook->ActiveSheet()->Cells()->Item(1, 1)->PutValue(value);
        return workbook;
    }

    template <class Action>
    static std::int32_t NumberOf(Action action)
    {
        try {
            action();
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    }

    TemporaryFolder folder_;
    std::shared_ptr<excel::Application> application_ = CreateProvider()->CreateApplication();
};

}  // namespace

TEST_F(ExcelProvider, OpensAFilesFirstSheet)
{
    const auto workbook = Opened(u"list.csv", "Contoso,TRUE,2024,,\n");

    EXPECT_EQ(ValueAt(workbook, 1, 1), excel::Value(String(u"Contoso")));
    EXPECT_EQ(ValueAt(workbook, 1, 2), excel::Value(true));
    EXPECT_EQ(ValueAt(workbook, 1, 3), excel::Value(2024.0));
    EXPECT_EQ(ValueAt(workbook, 1, 4), excel::Value());
    EXPECT_EQ(NumberOf([&] { workbook->Sheets()->Item(2); }), 1004);
}

TEST_F(ExcelProvider, CountsTheColumnsAndRowsOfTheUsedRange)
{
    const auto used = Opened(u"list.csv", ",,\n,a,b,c\n\n,d,,\n")->Sheets()->Item(1)->UsedRange();

    EXPECT_EQ(used->Columns()->Count(), 3);
    EXPECT_EQ(used->Rows()->Count(), 3);
    EXPECT_EQ(used->Count(), 9);
    EXPECT_EQ(used->Item(1, 1)->Value(), excel::Value(String(u"a")));
}

TEST_F(ExcelProvider, CountsCellsFromOneAndKnowsTheSheetsEnds)
{
    const auto cells = application_->Workbooks()->Add()->ActiveSheet()->Cells();

    EXPECT_EQ(NumberOf([&] { cells->Item(0, 1); }), 1004);
    EXPECT_EQ(NumberOf([&] { cells->Item(1, 0); }), 1004);
    EXPECT_EQ(NumberOf([&] { cells->Item(1048577, 1); }), 1004);
    EXPECT_EQ(NumberOf([&] { cells->Item(1, 16385); }), 1004);
    EXPECT_EQ(NumberOf([&] { cells->Item(1048576, 16384)->PutValue(true); }), 0);
    EXPECT_EQ(NumberOf([&] { cells->Count(); }), FailureNumber::Overflow);
}

TEST_F(ExcelProvider, KeepsEachKindOfValue)
{
    for (const excel::Value& value :
         {excel::Value(true), excel::Value(false), excel::Value(1.0), excel::Value(String(u"=1")),
          excel::Value(excel::CellError{0x2A}), excel::Value()})
        EXPECT_EQ(ValueAt(NewWith(value), 1, 1), value);
}

TEST_F(ExcelProvider, EmptiesACellByAnEmptyText)
{
    const auto workbook = NewWith(String(u"text"));

    workbook->ActiveSheet()->Cells()->Item(1, 1)->PutValue(String());

    EXPECT_EQ(ValueAt(workbook, 1, 1), excel::Value());
}

TEST_F(ExcelProvider, RefusesATextThatIsTooLongForACell)
{
    EXPECT_EQ(NumberOf([&] { NewWith(String(32767, u'x')); }), 0);
    EXPECT_EQ(NumberOf([&] { NewWith(String(32768, u'x')); }), 1004);
}

TEST_F(ExcelProvider, SavesInTheFormatOfTheName)
{
    for (const StringView name : {u"list.xls", u"list.csv"}) {
        const String path = folder_.PathOf(name);

        NewWith(String(u"007"))->SaveAs(path);

        EXPECT_EQ(ValueAt(application_->Workbooks()->Open(path), 1, 1), excel::Value(String(u"007")));
    }
    EXPECT_EQ(NumberOf([&] { NewWith(true)->SaveAs(folder_.PathOf(u"list.tab")); }), 1004);
}

TEST_F(ExcelProvider, ReplacesAFileOnlyWithoutAlerts)
{
    const String path = folder_.Write(u"list.csv", "old");
    application_->PutDisplayAlerts(true);

    EXPECT_EQ(NumberOf([&] { NewWith(true)->SaveAs(path); }), 1004);
    EXPECT_EQ(ContentOf(path), "old");

    application_->PutDisplayAlerts(false);
    NewWith(true)->SaveAs(path);
    EXPECT_EQ(ContentOf(path), "\xEF\xBB\xBFTRUE\r\n");
}

TEST_F(ExcelProvider, SavesAChangedWorkbookUnderItsName)
{
    const auto workbook = Opened(u"list.csv", "old");

    workbook->Save();
    EXPECT_EQ(ContentOf(folder_.PathOf(u"list.csv")), "old");

    workbook->ActiveSheet()->Cells()->Item(1, 1)->PutValue(String(u"new"));
    workbook->Save();
    EXPECT_EQ(ContentOf(folder_.PathOf(u"list.csv")), "\xEF\xBB\xBFnew\r\n");
}

TEST_F(ExcelProvider, RefusesToSaveAChangedWorkbookWithoutAName)
{
    EXPECT_EQ(NumberOf([&] { NewWith(true)->Save(); }), 1004);
}

TEST_F(ExcelProvider, SavesOnCloseWhenAskedTo)
{
    for (const bool saves : {true, false}) {
        const auto workbook = Opened(u"list.csv", "old");
        workbook->ActiveSheet()->Cells()->Item(1, 1)->PutValue(String(u"new"));

        workbook->Close(saves ? excel::xlSaveChanges : excel::xlDoNotSaveChanges);

        EXPECT_EQ(ContentOf(folder_.PathOf(u"list.csv")), saves ? "\xEF\xBB\xBFnew\r\n" : "old");
    }
}

TEST_F(ExcelProvider, RefusesEverythingOfAClosedWorkbook)
{
    const auto workbook = NewWith(true);
    const auto cell = workbook->ActiveSheet()->Cells()->Item(1, 1);
    const auto sheet = workbook->ActiveSheet();

    workbook->Close(excel::xlDoNotSaveChanges);

    EXPECT_EQ(NumberOf([&] { cell->Value(); }), disconnected);
    EXPECT_EQ(NumberOf([&] { cell->PutValue(true); }), disconnected);
    EXPECT_EQ(NumberOf([&] { sheet->UsedRange(); }), disconnected);
    EXPECT_EQ(NumberOf([&] { workbook->Save(); }), disconnected);
    EXPECT_EQ(NumberOf([&] { workbook->SaveAs(folder_.PathOf(u"list.xls")); }), disconnected);
    EXPECT_EQ(NumberOf([&] { workbook->Close(excel::xlDoNotSaveChanges); }), disconnected);
}

TEST_F(ExcelProvider, RefusesEverythingOfAnApplicationThatHasQuit)
{
    const auto workbook = NewWith(true);
    const auto workbooks = application_->Workbooks();

    application_->Quit();

    EXPECT_EQ(NumberOf([&] { workbook->Save(); }), disconnected);
    EXPECT_EQ(NumberOf([&] { workbooks->Add(); }), disconnected);
    EXPECT_EQ(NumberOf([&] { workbooks->Open(u"list.csv"); }), disconnected);
    EXPECT_EQ(NumberOf([&] { application_->PutDisplayAlerts(false); }), disconnected);
    EXPECT_EQ(NumberOf([&] { application_->Quit(); }), disconnected);
}

TEST_F(ExcelProvider, StartsApplicationsThatKnowNothingOfEachOther)
{
    const auto workbook = NewWith(true);

    CreateProvider()->CreateApplication()->Quit();

    EXPECT_EQ(ValueAt(workbook, 1, 1), excel::Value(true));
}

TEST_F(ExcelProvider, TellsThatAFileIsMissing)
{
    EXPECT_EQ(NumberOf([&] { application_->Workbooks()->Open(folder_.PathOf(u"none.xls")); }), 1004);
}

}  // namespace tessarine::sheets
