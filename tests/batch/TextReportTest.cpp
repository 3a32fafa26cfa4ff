#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/ReportFormats.h"
#include "ReportTest.h"

namespace tessarine::batch
{
namespace
{

std::string TextOf(const FileReport& file, const ReportStyle& style)
{
    return CreateTextReport(style)->OfFile(file);
}

std::string TextOf(const BackupReport& file, const ReportStyle& style)
{
    return CreateTextReport(style)->OfFile(file);
}

const ReportStyle finding = StyleOf(Command::Find);
const ReportStyle replacing = StyleOf(Command::Replace);

TEST(TextReport, NamesThePairsAndPlacesOfAChangedFile)
{
    const FileReport file{
        u"a.pptx", 1, {}, {Pair(u"Fabrikam", u"Contoso", 2, 1), Pair(u"none", u"", 0, 0), Pair(u"Züri", u"", 0, 4)}};

    EXPECT_EQ(TextOf(file, replacing),
              "a.pptx: changed, 7 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 2, notes 1\n"
              "    \"Züri\" -> \"\"             notes 4\n");
}

TEST(TextReport, NamesTheTextsThatAFindFound)
{
    EXPECT_EQ(TextOf(FileReport{u"a.pptx", 1, {}, {Pair(u"cat", {}, 2, 0)}}, finding),
              "a.pptx: 2 found\n"
              "    \"cat\"  slides 2\n");
}

TEST(TextReport, LeavesOutAnUnchangedFileUnlessVerbose)
{
    const FileReport file{u"a.pptx", 2, {}, {Pair(u"cat", {}, 0, 0)}};

    EXPECT_EQ(TextOf(file, replacing), "");
    EXPECT_EQ(TextOf(file, StyleOf(Command::Replace, true)), "a.pptx: unchanged\n");
    EXPECT_EQ(TextOf(file, StyleOf(Command::Find, true)), "a.pptx: nothing found\n");
}

TEST(TextReport, TellsCountedFromChanged)
{
    FileReport counted{u"a.pptx", FileStatus::Counted, {}, {Pair(u"2", u"7", 3, 0)}};
    counted.hasNewContent = false;
    FileReport footer{u"b.pptx", FileStatus::NothingCounted, {}, {Pair(u"2", u"7", 0, 0)}};
    footer.hasNewContent = true;
    RunSummary summary;
    summary.Add(counted);
    summary.Add(footer);

    EXPECT_EQ(TextOf(counted, replacing),
              "a.pptx: 3 found, nothing could be changed\n"
              "    \"2\" -> \"7\"  slides 3\n");
    EXPECT_EQ(TextOf(footer, replacing), "b.pptx: changed, nothing counted\n");
    EXPECT_EQ(CreateTextReport(replacing)->AtEnd(summary),
              "2 files: 1 changed, 1 with nothing to change, 0 unchanged, 0 failed; 0 occurrences replaced\n");
}

TEST(TextReport, SaysOnOneLineWhyAFileFailed)
{
    EXPECT_EQ(TextOf(FailedFile(u"a.pptx", u"  Wrong Password has been supplied."), finding),
              "a.pptx: failed: Wrong Password has been supplied.\n");
    EXPECT_EQ(TextOf(FailedFile(u"a.pptx", u"two\nlines"), finding), "a.pptx: failed: two\\nlines\n");
    EXPECT_EQ(TextOf(FailedFile(u"a.pptx", u"  "), finding), "a.pptx: failed: \n");
}

TEST(TextReport, KeepsTheBytesOfPathsAndEscapesTexts)
{
    EXPECT_EQ(TextOf(FileReport{FromUtf8("caf\xE9.pptx"), 1, {}, {Pair(u"\x1B[31m\t\r\x7F", {}, 1, 0)}}, finding),
              "caf\xE9.pptx: 1 found\n"
              "    \"\\x1B[31m\\t\\r\\x7F\"  slides 1\n");
}

TEST(TextReport, EscapesControlsInPathsAndBackups)
{
    const String path = u"a\x1B]0;x\a\u202Eb\n.pptx";
    const std::string visible = "a\\x1B]0;x\\x07\\u202Eb\\n.pptx";

    EXPECT_EQ(TextOf(FailedFile(path, u"no\u009B"), finding), visible + ": failed: no\\u009B\n");
    EXPECT_EQ(TextOf(BackupReport{1, path, path, {}}, StyleOf(Command::Restore)),
              visible + ": restored from " + visible + "\n");
}

TEST(TextReport, PutsColorsAroundTextsOnly)
{
    EXPECT_EQ(TextOf(FailedFile(u"a.pptx", u"damaged"), StyleOf(Command::Find, false, true)),
              "\x1b[1ma.pptx\x1b[0m: \x1b[31mfailed\x1b[0m: damaged\n");
}

TEST(TextReport, TellsOneFromManyInTheSummary)
{
    RunSummary summary;
    summary.Add({u"a", 1, {}, {Pair(u"cat", u"dog", 1, 0)}});
    EXPECT_EQ(CreateTextReport(replacing)->AtEnd(summary),
              "1 file: 1 changed, 0 unchanged, 0 failed; 1 occurrence replaced\n");

    summary.Add(FailedFile(u"c", u"damaged"));
    summary.Add({u"a", 1, {}, {Pair(u"cat", u"dog", 1, 0)}});
    EXPECT_EQ(CreateTextReport(finding)->AtEnd(summary),
              "3 files: 2 with hits, 0 without, 1 failed; 2 occurrences found\n");
}

TEST(TextReport, SaysWhatBecameOfBackups)
{
    EXPECT_EQ(TextOf(BackupReport{1, u"a.pptx", u"a..bak", {}}, StyleOf(Command::Restore)),
              "a.pptx: restored from a..bak\n");
    EXPECT_EQ(TextOf(BackupReport{1, u"a.pptx", u"a..bak", {}}, StyleOf(Command::Clean)), "a.pptx: removed a..bak\n");
    EXPECT_EQ(TextOf(BackupReport{2, u"a.pptx", {}, {}}, StyleOf(Command::Clean, true)), "a.pptx: no backup\n");
    EXPECT_EQ(TextOf(BackupReport{0, u"a.pptx", {}, u"no"}, StyleOf(Command::Clean)), "a.pptx: failed: no\n");

    BackupSummary summary;
    summary.Add({1, u"a", u"b", {}});
    EXPECT_EQ(CreateTextReport(StyleOf(Command::Restore))->AtEnd(summary),
              "1 file: 1 restored, 0 without a backup, 0 failed\n");
    EXPECT_EQ(CreateTextReport(StyleOf(Command::Clean))->AtEnd(summary),
              "1 file: 1 backup removed, 0 without a backup, 0 failed\n");
    summary.Add({1, u"c", u"d", {}, {u"e"}});
    EXPECT_EQ(CreateTextReport(StyleOf(Command::Clean))->AtEnd(summary),
              "2 files: 3 backups removed, 0 without a backup, 0 failed\n");
}

TEST(TextReport, PutsAnEmptyLineBetweenFilesAndSummary)
{
    const auto silent = CreateTextReport(finding);
    EXPECT_EQ(silent->OfFile(FileReport{u"a.pptx", FileStatus::NothingCounted, {}, {}}), "");
    EXPECT_TRUE(silent->AtEnd(RunSummary{}).starts_with("0 files: "));

    const auto telling = CreateTextReport(finding);
    EXPECT_NE(telling->OfFile(FailedFile(u"a.pptx", u"damaged")), "");
    EXPECT_EQ(telling->OfFile(FileReport{u"b.pptx", FileStatus::NothingCounted, {}, {}}), "");
    EXPECT_TRUE(telling->AtEnd(RunSummary{}).starts_with("\n0 files: "));
}

TEST(TextReport, PutsWarningsUnderTheLineOfTheirFile)
{
    const auto report = CreateTextReport(StyleOf(Command::Replace));
    FileReport changed{u"a.pptx", FileStatus::Counted, {}, {Pair(u"cat", u"dog", 1, 0)}};
    changed.warnings = {u"has 1 more name", u"with\na line end"};
    FileReport unchanged{u"b.pptx", FileStatus::NothingCounted, {}, {}};
    unchanged.warnings = {u"has 1 more name"};

    EXPECT_EQ(report->OfFile(changed),
              "a.pptx: changed, 1 replaced\n"
              "    \"cat\" -> \"dog\"  slides 1\n"
              "    warning: has 1 more name\n"
              "    warning: with\\na line end\n");
    EXPECT_EQ(report->OfFile(unchanged),
              "b.pptx: unchanged\n"
              "    warning: has 1 more name\n");
}

/// A report of so many files without a hit, and its summary.
struct LongRun {
    explicit LongRun(const ReportStyle& style) : report(CreateTextReport(style)) {}

    void Add(const FileReport& file)
    {
        report->OfFile(file);
        summary.Add(file);
    }
    void AddUnchanged(int count, const PairReport& first, const PairReport& second)
    {
        for (int number = 0; number < count; ++number)
            Add({u"u.pptx", FileStatus::NothingCounted, {}, {first, second}});
    }

    std::unique_ptr<Report> report;
    RunSummary summary;
};

TEST(TextReport, EndsALongRunWithFailuresAndTotals)
{
    LongRun run(replacing);
    run.Add(FailedFile(u"bad.pptx", u"damaged"));
    run.Add({u"a.pptx", 1, {}, {Pair(u"cat", u"dog", 2, 1), Pair(u"x", u"y", 0, 0)}});
    run.Add({u"b.pptx", 1, {}, {Pair(u"cat", u"dog", 4, 0), Pair(u"x", u"y", 0, 0)}});
    run.AddUnchanged(17, Pair(u"cat", u"dog", 0, 0), Pair(u"x", u"y", 0, 0));
    run.summary.seconds = 65;

    EXPECT_EQ(run.report->AtEnd(run.summary),
              "\n"
              "Failed: 1 file\n"
              "    bad.pptx: failed: damaged\n"
              "\n"
              "Totals:\n"
              "    \"cat\" -> \"dog\"  7 in 2 files\n"
              "Found nowhere: \"x\"\n"
              "\n"
              "20 files: 2 changed, 17 unchanged, 1 failed; 7 occurrences replaced, in 1:05\n");
}

TEST(TextReport, EndsAShortRunWithOneLine)
{
    LongRun run(finding);
    run.AddUnchanged(19, Pair(u"cat", {}, 0, 0), Pair(u"x", {}, 0, 0));

    EXPECT_EQ(run.report->AtEnd(run.summary), "19 files: 0 with hits, 19 without, 0 failed; 0 occurrences found\n");
}

TEST(TextReport, EndsAVeryLongRunOnOneScreen)
{
    LongRun run(finding);
    std::vector<PairReport> pairs;
    for (int number = 0; number < 50; ++number)
        pairs.push_back(Pair(FromUtf8("found " + std::to_string(number)), {}, number + 1, 0));
    for (int number = 0; number < 50; ++number)
        pairs.push_back(Pair(FromUtf8("missing " + std::to_string(number)), {}, 0, 0));
    for (int number = 0; number < 400; ++number) {
        run.Add({u"a.pptx", 1, {}, pairs});
        run.Add(FailedFile(u"bad.pptx", u"damaged"));
    }

    const std::string end = run.report->AtEnd(run.summary);

    EXPECT_LE(std::count(end.begin(), end.end(), '\n'), 24);
    EXPECT_THAT(end, testing::HasSubstr("Failed: 400 files\n"));
    EXPECT_THAT(end, testing::HasSubstr("    and 393 more\n"));
    EXPECT_THAT(end, testing::HasSubstr("Totals:\n    \"found 49\"  20000 in 400 files\n"));
    EXPECT_THAT(end, testing::HasSubstr("\"missing 6\" and 43 more\n"));
}

TEST(TextReport, NamesWhatCleanRemovedAndWhatItLeft)
{
    const auto report = CreateTextReport(StyleOf(Command::Clean));
    BackupReport removed{1, u"a.pptx", u"a..bak.3", {}};
    removed.older = {u"a..bak.2", u"a..bak"};
    BackupReport left{2, u"b.pptx", {}, {}};
    left.warnings = {u"b..bak stays"};

    EXPECT_EQ(report->OfFile(removed), "a.pptx: removed a..bak.3 and 2 older ones\n");
    EXPECT_EQ(report->OfFile(left),
              "b.pptx: no backup\n"
              "    warning: b..bak stays\n");
}

TEST(TextReport, BeginsWithTheEngineAndSetsTheSummaryOffFromIt)
{
    const auto report = CreateTextReport(finding);

    EXPECT_EQ(report->AtStart(Engine::PowerPoint), "Engine: PowerPoint\n");
    EXPECT_EQ(report->AtEnd(RunSummary()), "\n0 files: 0 with hits, 0 without, 0 failed; 0 occurrences found\n");
    EXPECT_EQ(CreateTextReport(finding)->AtStart(Engine::BuiltIn), "Engine: built-in\n");
}

TEST(TextReport, ShowsEachHitUnderThePairsOfItsFile)
{
    FileReport file =
        FileWithHits({ShapeHit(), ValueHit({.location = Location::BuiltinProperies, .pair = 1, .property = u"Title"},
                                           u"", u"Fabrikam", u" in 2023")});
    file.warnings = {u"odd"};

    EXPECT_EQ(TextOf(file, ShowingStyleOf(Command::Find)),
              "a.pptx: 1 found\n"
              "    \"Fabrikam\"  slides 1\n"
              "    slide 3 \"Plan\", shape 2 \"Text 1\", paragraph 2: ask [FABRIKAM] about\n"
              "    property \"Title\": [Fabrikam] in 2023\n"
              "    warning: odd\n");
    EXPECT_EQ(TextOf(file, finding),
              "a.pptx: 1 found\n"
              "    \"Fabrikam\"  slides 1\n"
              "    warning: odd\n");
}

TEST(TextReport, ShowsWhatAHitBecomes)
{
    Hit replaced = ShapeHit();
    replaced.becomes = u"Contoso";
    Hit deleted = ShapeHit();
    deleted.becomes = u"";

    EXPECT_EQ(TextOf(FileWithHits({replaced, deleted, ShapeHit()}), ShowingStyleOf(Command::Replace)),
              "a.pptx: changed, 1 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 1\n"
              "    slide 3 \"Plan\", shape 2 \"Text 1\", paragraph 2: ask [FABRIKAM -> Contoso] about\n"
              "    slide 3 \"Plan\", shape 2 \"Text 1\", paragraph 2: ask [FABRIKAM -> ] about\n"
              "    slide 3 \"Plan\", shape 2 \"Text 1\", paragraph 2 (stays as it is): ask [FABRIKAM] about\n");
}

TEST(TextReport, MarksHitsByColorsOnATerminal)
{
    Hit replaced = ShapeHit();
    replaced.becomes = u"Contoso";
    Hit deleted = ShapeHit();
    deleted.becomes = u"";
    const std::string place = "    \x1b[36mslide 3 \"Plan\", shape 2 \"Text 1\", paragraph 2\x1b[0m";
    const std::string found = TextOf(FileWithHits({ShapeHit()}), ShowingStyleOf(Command::Find, true));
    const std::string changed =
        TextOf(FileWithHits({replaced, deleted, ShapeHit()}), ShowingStyleOf(Command::Replace, true));

    EXPECT_THAT(found, testing::EndsWith(place + ": ask \x1b[1;31mFABRIKAM\x1b[0m about\n"));
    EXPECT_THAT(changed,
                testing::EndsWith(place + ": ask \x1b[9;31mFABRIKAM\x1b[0m\x1b[1;32mContoso\x1b[0m about\n" +  //
                                  place + ": ask \x1b[9;31mFABRIKAM\x1b[0m about\n" +                          //
                                  place + " (stays as it is): ask \x1b[1;31mFABRIKAM\x1b[0m about\n"));
}

TEST(TextReport, SaysHowManyHitsWereLeftOut)
{
    FileReport file = FileWithHits({ShapeHit()});
    file.hitsLeftOut = 12;

    EXPECT_THAT(TextOf(file, ShowingStyleOf(Command::Find)), testing::EndsWith(" about\n    and 12 more\n"));
    EXPECT_THAT(TextOf(file, finding), testing::Not(testing::HasSubstr("more")));
}

TEST(TextReport, ShowsHitsThatAreNotCounted)
{
    Hit hit = ValueHit({.location = Location::Footer, .slide = 1, .headerFooter = HitPlace::HeaderFooter::Footer},
                       u"(c) ", u"Fabrikam");
    hit.isCounted = false;
    FileReport file{u"a.pptx", FileStatus::NothingCounted, {}, {Pair(u"Fabrikam", u"Contoso", 0, 0)}};
    file.hits = {hit};
    FileReport changed = file;
    changed.hasNewContent = true;
    changed.hits[0].becomes = u"Contoso";

    EXPECT_EQ(TextOf(file, ShowingStyleOf(Command::Find)),
              "a.pptx: nothing counted\n"
              "    slide 1, footer (not counted): (c) [Fabrikam]\n");
    EXPECT_EQ(TextOf(changed, ShowingStyleOf(Command::Replace)),
              "a.pptx: changed, nothing counted\n"
              "    slide 1, footer (not counted): (c) [Fabrikam -> Contoso]\n");
}

TEST(TextReport, ShowsThePairsTextForAHitWithoutItsOwn)
{
    Hit hit = ShapeHit();
    hit.text.clear();

    EXPECT_THAT(TextOf(FileWithHits({hit}), ShowingStyleOf(Command::Find)), testing::HasSubstr("ask [Fabrikam] about"));
}

TEST(TextReport, KeepsHitsHarmless)
{
    Hit hit = ShapeHit();
    hit.before = u"\x1B]0;x\a\v";
    hit.after = u"\u202E\n";

    EXPECT_THAT(TextOf(FileWithHits({hit}), ShowingStyleOf(Command::Find)),
                testing::EndsWith(": \\x1B]0;x\\x07 [FABRIKAM]\\u202E \n"));
}

TEST(TextReport, SaysWhatADryRunWouldDo)
{
    ReportStyle style = StyleOf(Command::Replace, true);
    style.dryRun = true;
    FileReport footer{u"b.pptx", FileStatus::NothingCounted, {}, {Pair(u"2", u"7", 0, 0)}};
    footer.hasNewContent = true;
    FileReport counted{u"c.pptx", FileStatus::Counted, {}, {Pair(u"2", u"7", 3, 0)}};
    counted.hasNewContent = false;
    const FileReport unchanged{u"d.pptx", FileStatus::NothingCounted, {}, {Pair(u"2", u"7", 0, 0)}};
    RunSummary summary;
    for (const FileReport& file : {FileWithHits({}), footer, counted, unchanged})
        summary.Add(file);

    EXPECT_EQ(TextOf(FileWithHits({}), style),
              "a.pptx: would be changed, 1 would be replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 1\n");
    EXPECT_EQ(TextOf(footer, style), "b.pptx: would be changed, nothing counted\n");
    EXPECT_EQ(TextOf(counted, style),
              "c.pptx: 3 found, nothing could be changed\n"
              "    \"2\" -> \"7\"  slides 3\n");
    EXPECT_EQ(TextOf(unchanged, style), "d.pptx: unchanged\n");
    EXPECT_EQ(CreateTextReport(style)->AtEnd(summary),
              "4 files: 2 would be changed, 1 with nothing to change, 1 unchanged, 0 failed; "
              "1 occurrence would be replaced\n"
              "Dry run: nothing was written\n");
}

}  // namespace
}  // namespace tessarine::batch
