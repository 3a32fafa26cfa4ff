#include <fstream>

#include <gmock/gmock.h>

#include "model/FindAndReplaceItems.h"
#include "model/ListColumns.h"
#include "office/sheets/ExcelProvider.h"
#include "office/windows/ExcelProvider.h"
#include "platform/Failure.h"
#include "StandIn.h"
#include "support/ErrorLogRecorder.h"
#include "support/MessageRecorder.h"

// Lists of pairs through Excel's stand-in, whose workbooks are the built-in spreadsheet engine's.

namespace tessarine::test
{
namespace
{

using standin::Action;
using standin::ExcelProgram;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ExcelSurface : public testing::Test
{
protected:
    ExcelSurface() : before(excel::SetProvider(windows::CreateExcelProvider())) {}
    ~ExcelSurface() override { excel::SetProvider(before); }

    /// A list as the built-in engine writes it.
    String List(StringView name, const std::vector<std::pair<String, String>>& pairs)
    {
        const String path = folder.PathOf(name);
        const auto excel = excel::SetProvider(sheets::CreateProvider());
        FindAndReplaceItems items;
        for (const auto& [find, with] : pairs) {
            const auto setting = std::make_shared<OptionSetting>();
            setting->InSlides = true;
            items.Add(find, with, setting, nullptr);
        }
        items.ExportsList(path);
        excel::SetProvider(excel);
        return path;
    }

    static std::vector<std::string> PairsOf(const FindAndReplaceItems& list)
    {
        std::vector<std::string> pairs;
        for (const auto& item : list.NewEnum())
            pairs.push_back(ToUtf8(item->FindWhat + u" -> " + item->ReplaceWith) +
                            (item->OptionSetting->InSlides ? " in slides" : ""));
        return pairs;
    }

    std::size_t CallsOf(const std::string& call) const
    {
        const auto calls = standIn.Calls();
        return static_cast<std::size_t>(std::ranges::count(calls, call));
    }

    TemporaryFolder folder;
    const ErrorLogRecorder log;
    const MessageRecorder messages;
    StandIn standIn{ExcelProgram};
    const std::shared_ptr<excel::Provider> before;
};

TEST_F(ExcelSurface, ImportsAListAndClosesIt)
{
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(List(u"list.xls", {{u"007", u"=1"}, {u"caf\u00E9 \u4E2D", u"TRUE"}})));

    EXPECT_THAT(PairsOf(list), ElementsAre("007 -> =1 in slides", "caf\u00E9 \u4E2D -> TRUE in slides"));
    const auto calls = standIn.Calls();
    EXPECT_THAT(calls, Contains("Workbook.Close(2)"));
    EXPECT_EQ(calls.back(), "Application.Quit");
    EXPECT_EQ(CallsOf("Range.Value"), 3u * ListColumnCount) << "one call a cell";
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ExcelSurface, ImportBeginsAsTold)
{
    FindAndReplaceItems list;
    const String path = List(u"list.csv", {});

    list.ImportList(path);

    auto calls = standIn.Calls();
    ASSERT_GT(calls.size(), 12u);
    EXPECT_THAT(calls[2], HasSubstr("list.csv\")"));
    calls[2] = "Workbooks.Open";
    calls.resize(12);
    EXPECT_THAT(calls, ElementsAreArray({"CreateInstance", "Application.Workbooks", "Workbooks.Open", "Workbook.Sheets",
                                         "Sheets.Item(1)", "Worksheet.UsedRange", "Range.Columns", "Range.Count",
                                         "Range.Rows", "Range.Count", "Worksheet.Cells", "Range.Item(1, 1)"}));
}

TEST_F(ExcelSurface, ExportWritesTextsAsTextsAndComesBack)
{
    FindAndReplaceItems list;
    const auto setting = std::make_shared<OptionSetting>();
    setting->InNotes = true;
    list.Add(u"007", u"'quoted", setting, nullptr);
    list.Add(u"=1", u"", setting, nullptr);
    const String path = folder.PathOf(u"list.xls");

    list.ExportsList(path);

    EXPECT_THAT(standIn.Calls(), Contains("Application.DisplayAlerts = False"));
    EXPECT_THAT(standIn.Calls(), Contains(R"(Range.Value = "'007")"));
    EXPECT_THAT(standIn.Calls(), Contains(R"(Range.Value = "''quoted")"));
    EXPECT_THAT(standIn.Calls(), Contains("Range.Value = True"));
    EXPECT_THAT(standIn.Calls(), Contains("Range.Value = Empty"));
    EXPECT_EQ(standIn.Calls().back(), "Application.Quit");
    const auto excel = excel::SetProvider(sheets::CreateProvider());
    FindAndReplaceItems again;
    EXPECT_TRUE(again.ImportList(path));
    excel::SetProvider(excel);
    EXPECT_THAT(PairsOf(again), ElementsAre("007 -> 'quoted", "=1 -> "));
}

TEST_F(ExcelSurface, AListOfOtherColumnsLeavesAnExcelBehind)
{
    const String path = folder.Write(u"list.csv", "Find What,Replace With\n");
    FindAndReplaceItems list;

    EXPECT_FALSE(list.ImportList(path));

    EXPECT_EQ(CallsOf("Application.Quit"), 0u);
    EXPECT_THAT(standIn.Calls(), Not(Contains("Workbook.Close(2)")));
    EXPECT_EQ(standIn.Running(), 1u);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ExcelSurface, AFailureInARowLeavesAnExcelBehindAndTheRowsBefore)
{
    const String path = List(u"list.xls", {{u"a", u"1"}, {u"b", u"2"}});
    standIn.Give({{.action = Action::Raise,
                   .call = "Range.Item(3, 5)",
                   .number = FailureNumber::ApplicationDefined,
                   .text = "Application-defined or object-defined error"}});
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(path));

    EXPECT_THAT(PairsOf(list), ElementsAre("a -> 1 in slides"));
    EXPECT_EQ(standIn.Running(), 1u);
    ASSERT_EQ(log.Lines().size(), 1u);
    EXPECT_THAT(log.Lines().front(), HasSubstr("Error 1004 (Application-defined or object-defined error)"));
}

TEST_F(ExcelSurface, ABadHeaderClosesExcel)
{
    const String path = List(u"list.xls", {});
    standIn.Give({});
    std::string header;
    for (std::int32_t column = 0; column < ListColumnCount; ++column)
        header += (column > 0 ? "," : "") + std::string("x");
    const String bad = folder.Write(u"bad.csv", header + "\n");
    FindAndReplaceItems list;

    EXPECT_FALSE(list.ImportList(bad));

    EXPECT_EQ(standIn.Calls().back(), "Application.Quit");
}

TEST_F(ExcelSurface, DeathInACellEndsTheImport)
{
    const String path = List(u"list.xls", {{u"a", u"1"}});
    standIn.Give({{.action = Action::Die, .call = "Range.Value", .skipped = ListColumnCount}});
    FindAndReplaceItems list;

    EXPECT_TRUE(list.ImportList(path)) << "the header was accepted";

    ASSERT_EQ(log.Lines().size(), 1u);
    EXPECT_THAT(log.Lines().front(), HasSubstr("Error -2147023170"));
    EXPECT_EQ(standIn.Running(), 0u);
}

TEST_F(ExcelSurface, EachApplicationIsAProcessOfItsOwn)
{
    const auto provider = windows::CreateExcelProvider();
    const auto first = provider->CreateApplication();
    const auto second = provider->CreateApplication();

    first->Quit();
    second->PutDisplayAlerts(false);

    EXPECT_EQ(standIn.Started(), 2u);
}

TEST_F(ExcelSurface, CellsHaveTheirTypes)
{
    const String path = folder.Write(u"values.csv", "text,2.5,TRUE,,#N/A\n");
    const auto application = excel::CreateApplication();
    const auto cells = application->Workbooks()->Open(path)->Sheets()->Item(1)->Cells();
    const auto valueAt = [&](std::int32_t column) { return cells->Item(1, column)->Value(); };

    EXPECT_EQ(valueAt(1), excel::Value(String(u"text")));
    EXPECT_EQ(valueAt(2), excel::Value(2.5));
    EXPECT_EQ(valueAt(3), excel::Value(true));
    EXPECT_EQ(valueAt(4), excel::Value());
    const auto builtIn = sheets::CreateProvider()->CreateApplication();
    EXPECT_EQ(valueAt(5), builtIn->Workbooks()->Open(path)->Sheets()->Item(1)->Cells()->Item(1, 5)->Value());
    application->Quit();
}

}  // namespace
}  // namespace tessarine::test
