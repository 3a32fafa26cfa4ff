#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/ReportFormats.h"
#include "ReportTest.h"

namespace tessarine::batch
{
namespace
{

std::string JsonOf(const FileReport& file)
{
    return CreateJsonReport(StyleOf(Command::Replace))->OfFile(file);
}

TEST(JsonReport, GivesAFileItsKeysAndTheSearchedLocationsAlone)
{
    const FileReport file{u"decks/a.pptx", 1, {}, {Pair(u"cat", u"dog", 3, 0), Pair(u"x", u"", 0, 0)}};

    EXPECT_EQ(JsonOf(file), R"({"version":1,"file":"decks/a.pptx","status":1,"state":"changed","error":"","items":[)"
                            R"({"find":"cat","replace":"dog","counts":{"slides":3,"notes":0}},)"
                            R"({"find":"x","replace":"","counts":{"slides":0,"notes":0}}],"warnings":[]})"
                            "\n");
}

TEST(JsonReport, GivesAFailedFileNoItems)
{
    EXPECT_EQ(
        JsonOf(FailedFile(u"a.pptx", u"  Wrong Password has been supplied.")),
        R"({"version":1,"file":"a.pptx","status":0,"state":"failed","error":"  Wrong Password has been supplied.","items":[],"warnings":[]})"
        "\n");
}

TEST(JsonReport, NamesLocationsInTheirOrderAsTheCommandLineDoes)
{
    ReportStyle style;
    PairReport pair{u"a", u"b", {}};
    for (std::size_t row = 0; row < SearchLocations.size(); ++row) {
        style.setting.*SearchLocations[row].isOn = true;
        pair.counts[row] = static_cast<std::int32_t>(row);
    }

    EXPECT_EQ(
        CreateJsonReport(style)->OfFile(FileReport{u"a.pptx", 1, {}, {pair}}),
        R"({"version":1,"file":"a.pptx","status":1,"state":"found","error":"","items":[{"find":"a","replace":"b","counts":{)"
        R"("slides":0,"hyperlinks":1,"shapes":2,"header":3,"footer":4,"builtin-properties":5,)"
        R"("custom-properties":6,"notes":7,"links":8,"master-per-slide":9,"master-per-presentation":10,)"
        R"("title-master":11,"handout-master":12,"notes-master":13}}],"warnings":[]})"
        "\n");
}

TEST(JsonReport, IsUtf8OnOneLine)
{
    const FileReport file{u"Zürich 😀.pptx", 1, {}, {Pair(u"a\"b\n\t\\", u"\u0001", 1, 0)}};

    EXPECT_EQ(JsonOf(file),
              "{\"version\":1,\"file\":\"Zürich "
              "😀.pptx\",\"status\":1,\"state\":\"changed\",\"error\":\"\",\"items\":[{\"find\":\"a\\\"b\\n\\t\\\\\","
              "\"replace\":\"\\u0001\",\"counts\":{\"slides\":1,\"notes\":0}}],\"warnings\":[]}\n");
}

TEST(JsonReport, ReplacesBytesThatAreNotUtf8)
{
    EXPECT_EQ(JsonOf(FailedFile(FromUtf8("caf\xE9.pptx"), u"\xD800")),
              "{\"version\":1,\"file\":\"caf\uFFFD.pptx\",\"status\":0,\"state\":\"failed\",\"error\":\"\uFFFD\","
              "\"items\":[],"
              "\"warnings\":[]}\n");
}

TEST(JsonReport, AddsUpAtTheEnd)
{
    RunSummary summary;
    summary.Add({u"a", 1, {}, {Pair(u"cat", u"dog", 3, -1), Pair(u"x", u"y", 2, 2)}});
    summary.Add({u"b", 2, {}, {Pair(u"cat", u"dog", 0, 0)}});
    summary.Add(FailedFile(u"c", u"damaged"));

    EXPECT_EQ(
        CreateJsonReport(StyleOf(Command::Replace))->AtEnd(summary),
        R"({"version":1,"summary":{"files":3,"changed":1,"unchanged":1,"failed":1,"occurrences":7,"warnings":[]}})"
        "\n");
}

TEST(JsonReport, TellsTheVersionInTheFirstAndTheLastLine)
{
    const auto run = CreateJsonReport(StyleOf(Command::Find));
    const auto backups = CreateJsonReport(StyleOf(Command::Clean));
    const std::string version = R"({"version":1,)";

    EXPECT_THAT(run->OfFile(FailedFile(u"a", u"damaged")), testing::StartsWith(version));
    EXPECT_THAT(run->OfFile(FailedFile(u"b", u"damaged")), testing::StartsWith(R"({"file":"b",)"));
    EXPECT_THAT(run->AtEnd(RunSummary()), testing::StartsWith(version));
    EXPECT_THAT(backups->OfFile(BackupReport{1, u"a", u"a..bak", {}}), testing::StartsWith(version));
    EXPECT_THAT(backups->OfFile(BackupReport{1, u"b", u"b..bak", {}}), testing::StartsWith(R"({"file":"b",)"));
    EXPECT_THAT(backups->AtEnd(BackupSummary()), testing::StartsWith(version));
}

TEST(JsonReport, NamesStatesByOneWord)
{
    FileReport countedOnly{u"a", FileStatus::Counted, {}, {Pair(u"2", u"7", 3, 0)}};
    countedOnly.hasNewContent = false;
    const FileReport nothing{u"a", FileStatus::NothingCounted, {}, {}};
    const auto find = CreateJsonReport(StyleOf(Command::Find));
    const auto restore = CreateJsonReport(StyleOf(Command::Restore));

    EXPECT_THAT(JsonOf(countedOnly), testing::HasSubstr(R"("status":1,"state":"found")"));
    EXPECT_THAT(find->OfFile(FileWithHits({})), testing::HasSubstr(R"("status":1,"state":"found")"));
    EXPECT_THAT(find->OfFile(nothing), testing::HasSubstr(R"("status":2,"state":"unchanged")"));
    EXPECT_THAT(restore->OfFile(BackupReport{2, u"a", {}, {}}),
                testing::HasSubstr(R"("status":2,"state":"unchanged")"));
    EXPECT_THAT(restore->OfFile(BackupReport{0, u"a", {}, u"no"}),
                testing::HasSubstr(R"("status":0,"state":"failed")"));
}

TEST(JsonReport, TellsInTheSummaryWhatBelongsToNoFile)
{
    RunSummary summary;
    summary.notReached = 3;
    summary.warnings = {u"1 linked folder was left out"};

    EXPECT_EQ(CreateJsonReport(StyleOf(Command::Find))->AtEnd(summary),
              R"({"version":1,"summary":{"files":0,"changed":0,"unchanged":0,"failed":0,"occurrences":0,)"
              R"("notProcessed":3,"warnings":["1 linked folder was left out"]}})"
              "\n");
}

TEST(JsonReport, HoldsTheWarningsOfAFile)
{
    FileReport file{u"a.pptx", 2, {}, {}};
    file.warnings = {u"has 2 more names", u"café"};

    EXPECT_EQ(
        JsonOf(file),
        R"({"version":1,"file":"a.pptx","status":2,"state":"unchanged","error":"","items":[],"warnings":["has 2 more names","café"]})"
        "\n");
}

TEST(JsonReport, NamesSkippedLinksWhereThereAreAny)
{
    RunSummary run;
    run.skippedLinks = 2;
    BackupSummary backups;
    backups.skippedLinks = 1;

    EXPECT_EQ(
        CreateJsonReport(StyleOf(Command::Find))->AtEnd(run),
        R"({"version":1,"summary":{"files":0,"changed":0,"unchanged":0,"failed":0,"occurrences":0,"skippedLinks":2,"warnings":[]}})"
        "\n");
    EXPECT_EQ(
        CreateJsonReport(StyleOf(Command::Clean))->AtEnd(backups),
        R"({"version":1,"summary":{"files":0,"removed":0,"unchanged":0,"failed":0,"skippedLinks":1,"warnings":[]}})"
        "\n");
}

TEST(JsonReport, NamesOlderBackupsThatAreGone)
{
    BackupReport file{1, u"a.pptx", u"a..bak.2", {}};
    file.older = {u"a..bak"};

    EXPECT_EQ(
        CreateJsonReport(StyleOf(Command::Clean))->OfFile(file),
        R"({"version":1,"file":"a.pptx","backup":"a..bak.2","status":1,"state":"removed","error":"","older":["a..bak"],"warnings":[]})"
        "\n");
}

TEST(JsonReport, NamesTheBackupOfAFile)
{
    EXPECT_EQ(
        CreateJsonReport(StyleOf(Command::Restore))->OfFile(BackupReport{1, u"a.pptx", u"a..bak", {}}),
        R"({"version":1,"file":"a.pptx","backup":"a..bak","status":1,"state":"restored","error":"","older":[],"warnings":[]})"
        "\n");
    BackupSummary summary;
    summary.Add({1, u"a", u"b", {}});
    EXPECT_EQ(CreateJsonReport(StyleOf(Command::Restore))->AtEnd(summary),
              R"({"version":1,"summary":{"files":1,"restored":1,"unchanged":0,"failed":0,"warnings":[]}})"
              "\n");
    EXPECT_EQ(CreateJsonReport(StyleOf(Command::Clean))->AtEnd(summary),
              R"({"version":1,"summary":{"files":1,"removed":1,"unchanged":0,"failed":0,"warnings":[]}})"
              "\n");
}

TEST(JsonReport, NamesTheEngineInTheSummaryAlone)
{
    const auto report = CreateJsonReport(StyleOf(Command::Replace));
    RunSummary summary;
    summary.engine = Engine::PowerPoint;

    EXPECT_EQ(report->AtStart(Engine::PowerPoint), "");
    EXPECT_EQ(
        report->AtEnd(summary),
        R"({"version":1,"summary":{"engine":"powerpoint","files":0,"changed":0,"unchanged":0,"failed":0,"occurrences":0,"warnings":[]}})"
        "\n");
}

/// The hits of a file, as a report of this command tells them.
std::string HitsOf(const std::vector<Hit>& hits, Command command = Command::Find)
{
    const std::string line = CreateJsonReport(ShowingStyleOf(command))->OfFile(FileWithHits(hits));
    const std::size_t begin = line.find("\"hits\":");
    return line.substr(begin, line.rfind(",\"warnings\"") - begin);
}

TEST(JsonReport, TellsAHitWithItsPlaceAndText)
{
    EXPECT_EQ(HitsOf({ShapeHit()}),
              R"("hits":[{"pair":1,"location":"shapes","slide":3,"slideTitle":"Plan","shape":2,"shapeName":"Text 1",)"
              R"("paragraph":2,"position":5,"length":8,"before":"ask ","text":"FABRIKAM","after":" about"}])");
}

TEST(JsonReport, LeavesOutWhatAHitDoesNotTell)
{
    EXPECT_EQ(HitsOf({ValueHit({.location = Location::Links, .pair = 2}, u"", u"")}),
              R"("hits":[{"pair":2,"location":"links","position":1,"length":0,"before":"","text":"","after":""}])");
}

TEST(JsonReport, TellsThePlacesOfAllKindsOfHits)
{
    const std::string rest = R"("position":1,"length":1,"before":"","text":"x","after":""})";

    EXPECT_EQ(
        HitsOf(
            {ValueHit({.location = Location::SlideMasterPerSlide, .pair = 1, .design = u"Office"}, u"", u"x"),
             ValueHit({.location = Location::CustomProperties, .pair = 1, .property = u"Client"}, u"", u"x"),
             ValueHit({.location = Location::NotesMaster, .pair = 1, .headerFooter = HitPlace::HeaderFooter::Header},
                      u"", u"x"),
             ValueHit(
                 {.location = Location::Footer, .pair = 1, .slide = 1, .headerFooter = HitPlace::HeaderFooter::Footer},
                 u"", u"x"),
             ValueHit({.location = Location::HyperlinkAddresses, .pair = 1, .slide = 1, .hyperlink = 2}, u"", u"x")}),
        R"("hits":[{"pair":1,"location":"master-per-slide","design":"Office",)" + rest +
            R"(,{"pair":1,"location":"custom-properties","property":"Client",)" + rest +
            R"(,{"pair":1,"location":"notes-master","headerFooter":"header",)" + rest +
            R"(,{"pair":1,"location":"footer","slide":1,"headerFooter":"footer",)" + rest +
            R"(,{"pair":1,"location":"hyperlinks","slide":1,"hyperlink":2,)" + rest + "]");
}

TEST(JsonReport, TellsWhatAHitBecomesAndWhatIsUnusual)
{
    Hit hit = ValueHit({.location = Location::Footer, .pair = 1}, u"", u"x");
    hit.isCutBefore = hit.isCutAfter = true;
    hit.isCounted = false;
    const Hit stays = hit;
    hit.becomes = u"y";
    const std::string rest =
        R"({"pair":1,"location":"footer","position":1,"length":1,"before":"","text":"x","after":"",)"
        R"("cutBefore":true,"cutAfter":true,)";

    EXPECT_EQ(HitsOf({hit, stays}, Command::Replace), R"("hits":[)" + rest + R"("becomes":"y","counted":false},)" +
                                                          rest + R"("becomes":null,"counted":false}])");
    EXPECT_EQ(HitsOf({stays}), R"("hits":[)" + rest + R"("counted":false}])");
}

TEST(JsonReport, KeepsTheTextsOfHitsAsTheyAre)
{
    EXPECT_THAT(HitsOf({ValueHit({.location = Location::Links}, u"\v\u202E", u"😀", u"\"\x1B")}),
                testing::HasSubstr("\"before\":\"\\u000b\u202E\",\"text\":\"😀\",\"after\":\"\\\"\\u001b\""));
}

TEST(JsonReport, TellsHowManyHitsWereLeftOut)
{
    FileReport file = FileWithHits({});
    file.hitsLeftOut = 12;

    EXPECT_THAT(CreateJsonReport(ShowingStyleOf(Command::Find))->OfFile(file),
                testing::HasSubstr(R"("hits":[],"hitsLeftOut":12,"warnings":[]})"));
}

TEST(JsonReport, GivesAFailedFileNoHits)
{
    EXPECT_EQ(
        CreateJsonReport(ShowingStyleOf(Command::Find))->OfFile(FailedFile(u"a.pptx", u"damaged")),
        R"({"version":1,"file":"a.pptx","status":0,"state":"failed","error":"damaged","items":[],"hits":[],"warnings":[]})"
        "\n");
}

TEST(JsonReport, TellsHitsOnlyWhereTheyAreAskedFor)
{
    FileReport file = FileWithHits({ShapeHit()});
    file.hitsLeftOut = 12;

    EXPECT_EQ(JsonOf(file), JsonOf(FileWithHits({})));
    EXPECT_THAT(JsonOf(file), testing::Not(testing::HasSubstr("hits")));
}

TEST(JsonReport, TellsADryRunFromARealOne)
{
    ReportStyle style = StyleOf(Command::Replace);
    style.dryRun = true;
    RunSummary summary;
    summary.engine = Engine::BuiltIn;
    summary.Add(FileWithHits({}));

    EXPECT_EQ(CreateJsonReport(style)->OfFile(FileWithHits({})),
              R"({"version":1,"file":"a.pptx","dryRun":true,"status":1,"state":"changed","error":"","items":[)"
              R"({"find":"Fabrikam","replace":"Contoso","counts":{"slides":1,"notes":0}}],"warnings":[]})"
              "\n");
    EXPECT_EQ(
        CreateJsonReport(style)->AtEnd(summary),
        R"({"version":1,"summary":{"engine":"builtin","dryRun":true,"files":1,"changed":1,"unchanged":0,"failed":0,)"
        R"("occurrences":1,"warnings":[]}})"
        "\n");
}

}  // namespace
}  // namespace tessarine::batch
