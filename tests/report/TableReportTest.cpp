#include <gtest/gtest.h>

#include "report/RunReport.h"
#include "SampleReport.h"

namespace tessarine
{
namespace
{

using namespace test;

constexpr std::string_view headLine =
    "\xEF\xBB\xBF\"File\",\"State\",\"No.\",\"Find\",\"Replace with\",\"Place\",\"Slide\",\"Slide title\",\"Design\","
    "\"Property\",\"Hyperlink\",\"Shape\",\"Shape name\",\"Paragraph\",\"Position\",\"Length\",\"Before\",\"Hit\","
    "\"After\",\"Becomes\",\"Occurrences\",\"Note\"\r\n";

/// The report without its head.
std::string RowsOf(const std::vector<FileReport>& files, const RunFacts& facts = {}, const RunEnd& end = {})
{
    const std::string text = TextOf(*CreateTableReport(facts), files, end);
    EXPECT_EQ(text.substr(0, headLine.size()), headLine);
    return text.substr(headLine.size());
}

TEST(TableReport, GivesEachHitARow)
{
    const auto file =
        FileWith(u"a.pptx", {Pair(u"cat", u"dog", 2)},
                 {HitOnSlide(1, 3, u"One ", u"Cat", u" and a cat"), HitOnSlide(1, 3, u"One Cat and a ", u"cat", u"")});

    EXPECT_EQ(RowsOf({file}),
              "\"a.pptx\",\"Found\",1,\"cat\",\"dog\",\"slides\",3,\"Plan\",,,,2,\"Text 1\",1,5,3,\"One \",\"Cat\",\" "
              "and a cat\",,1,\r\n"
              "\"a.pptx\",\"Found\",1,\"cat\",\"dog\",\"slides\",3,\"Plan\",,,,2,\"Text 1\",1,15,3,\"One Cat and a "
              "\",\"cat\",,,1,\r\n");
}

TEST(TableReport, TellsWhatAHitBecomesAndWhatStays)
{
    Hit stays = HitOnSlide(1, 1, u"", u"cat", u"");
    stays.isCounted = false;

    EXPECT_EQ(RowsOf({FileWith(u"a", {Pair(u"cat", u"dog", 1)}, {HitOnSlide(1, 1, u"", u"cat", u"s", u"dog"), stays})},
                     {.replaces = true}),
              "\"a\",\"Changed\",1,\"cat\",\"dog\",\"slides\",1,\"Plan\",,,,2,\"Text "
              "1\",1,1,3,,\"cat\",\"s\",\"dog\",1,\r\n"
              "\"a\",\"Changed\",1,\"cat\",\"dog\",\"slides\",1,\"Plan\",,,,2,\"Text 1\",1,1,3,,\"cat\",,,0,\"not "
              "counted, stays as it is\"\r\n");
}

TEST(TableReport, CountsWhatNoHitTellsOf)
{
    EXPECT_EQ(
        RowsOf({FileWith(u"a", {Pair(u"x", u"", 0), Pair(u"cat", u"", 5, 2)}, {HitOnSlide(2, 1, u"", u"cat", u"")})}),
        "\"a\",\"Found\",2,\"cat\",,\"slides\",1,\"Plan\",,,,2,\"Text 1\",1,1,3,,\"cat\",,,1,\r\n"
        "\"a\",\"Found\",2,\"cat\",,\"slides\",,,,,,,,,,,,,,,4,\"Further hits, not listed: 4\"\r\n"
        "\"a\",\"Found\",2,\"cat\",,\"notes\",,,,,,,,,,,,,,,2,\"Further hits, not listed: 2\"\r\n");
}

TEST(TableReport, GivesARowToFilesWithoutHitsFailuresAndWarnings)
{
    FileReport warned = FileWith(u"b", {Pair(u"cat", u"", 0)});
    warned.warnings = {u"has other names"};

    EXPECT_EQ(RowsOf({FileWith(u"a", {Pair(u"cat", u"", 0)}), warned, FailedFile(u"c", u"damaged")}),
              "\"a\",\"Nothing found\",,,,,,,,,,,,,,,,,,,0,\r\n"
              "\"b\",\"Nothing found\",,,,,,,,,,,,,,,,,,,0,\r\n"
              "\"b\",\"Nothing found\",,,,,,,,,,,,,,,,,,,0,\"Warning: has other names\"\r\n"
              "\"c\",\"Failed\",,,,,,,,,,,,,,,,,,,0,\"damaged\"\r\n");
}

TEST(TableReport, EndsInTheNoteOfACancelledRun)
{
    EXPECT_EQ(RowsOf({}, {}, {.way = RunEnd::Way::Cancelled, .notReached = 7}),
              ",\"Not processed\",,,,,,,,,,,,,,,,,,,,\"The run was cancelled. Files that were not processed: 7\"\r\n");
}

TEST(TableReport, LetsNoTextBecomeAFormula)
{
    const auto place = std::make_shared<HitPlace>();
    place->pair = 1;
    place->slideTitle = u"=title";
    place->design = u"+design";
    place->property = u"-property";
    place->shapeName = u"@shape";
    Hit hit;
    hit.place = place;
    hit.before = u"=before";
    hit.text = u"\t=text";
    hit.after = u"＝after";
    hit.becomes = u"@becomes";
    FileReport file = FileWith(u"=a.pptx", {Pair(u"=find", u"+replace", 1)}, {hit});
    file.warnings = {u"=warning"};

    const std::string rows = RowsOf({file, FailedFile(u"b", u"=error")}, {.replaces = true});

    EXPECT_EQ(
        rows,
        "\"'=a.pptx\",\"Changed\",1,\"'=find\",\"'+replace\",\"slides\",,\"'=title\",\"'+design\",\"'-property\",,"
        ",\"'@shape\",,,,\"'=before\",\"' =text\",\"'＝after\",\"'@becomes\",1,\r\n"
        "\"'=a.pptx\",\"Changed\",,,,,,,,,,,,,,,,,,,0,\"Warning: =warning\"\r\n"
        "\"b\",\"Failed\",,,,,,,,,,,,,,,,,,,0,\"'=error\"\r\n");
}

TEST(TableReport, MarksWhereAParagraphGoesOn)
{
    Hit hit = HitOnSlide(1, 1, u"b", u"cat", u"a");
    hit.isCutBefore = hit.isCutAfter = true;

    EXPECT_NE(RowsOf({FileWith(u"a", {Pair(u"cat", u"", 1)}, {hit})}).find(",\"…b\",\"cat\",\"a…\","),
              std::string::npos);
}

TEST(TableReport, ShowsThePairsTextForAHitThatCannotTellItsOwn)
{
    EXPECT_NE(RowsOf({FileWith(u"a", {Pair(u"cat", u"", 1)}, {HitOnSlide(1, 1, u"b", u"", u"a")})})
                  .find(",\"b\",\"cat\",\"a\","),
              std::string::npos);
}

}  // namespace
}  // namespace tessarine
