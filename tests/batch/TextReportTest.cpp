#include "batch/TextLayout.h"

#include <gtest/gtest.h>

namespace tessarine::batch
{
namespace
{

constexpr TextStyle finding{Command::Find, false, false};
constexpr TextStyle replacing{Command::Replace, false, false};

OptionSetting SlidesAndNotes()
{
    OptionSetting setting;
    setting.InSlides = true;
    setting.InNotes = true;
    return setting;
}

PairReport Pair(const String& find, const String& replace, std::int32_t slides, std::int32_t notes)
{
    PairReport pair{find, replace, {}};
    pair.counts.fill(-1);
    pair.counts[static_cast<std::size_t>(Location::Slides)] = slides;
    pair.counts[static_cast<std::size_t>(Location::Notes)] = notes;
    return pair;
}

TEST(TextLayout, AChangedFileNamesItsPairsAndPlaces)
{
    const FileReport file{
        u"a.pptx", 1, {}, {Pair(u"Fabrikam", u"Contoso", 2, 1), Pair(u"none", u"", 0, 0), Pair(u"Züri", u"", 0, 4)}};

    EXPECT_EQ(TextLines(file, SlidesAndNotes(), replacing),
              "a.pptx: changed, 7 replaced\n"
              "    \"Fabrikam\" -> \"Contoso\"  slides 2, notes 1\n"
              "    \"Züri\" -> \"\"             notes 4\n");
}

TEST(TextLayout, AFindNamesTheTextsFound)
{
    EXPECT_EQ(TextLines({u"a.pptx", 1, {}, {Pair(u"cat", {}, 2, 0)}}, SlidesAndNotes(), finding),
              "a.pptx: 2 found\n"
              "    \"cat\"  slides 2\n");
}

TEST(TextLayout, AnUnchangedFileIsQuietUnlessWanted)
{
    const FileReport file{u"a.pptx", 2, {}, {Pair(u"cat", {}, 0, 0)}};

    EXPECT_EQ(TextLines(file, SlidesAndNotes(), replacing), "");
    EXPECT_EQ(TextLines(file, SlidesAndNotes(), {Command::Replace, true, false}), "a.pptx: unchanged\n");
    EXPECT_EQ(TextLines(file, SlidesAndNotes(), {Command::Find, true, false}), "a.pptx: nothing found\n");
}

TEST(TextLayout, AFailedFileSaysWhyOnOneLine)
{
    EXPECT_EQ(TextLines(FailedFile(u"a.pptx", u"  Wrong Password has been supplied."), SlidesAndNotes(), finding),
              "a.pptx: failed: Wrong Password has been supplied.\n");
    EXPECT_EQ(TextLines(FailedFile(u"a.pptx", u"two\nlines"), SlidesAndNotes(), finding),
              "a.pptx: failed: two\\nlines\n");
    EXPECT_EQ(TextLines(FailedFile(u"a.pptx", u"  "), SlidesAndNotes(), finding), "a.pptx: failed: \n");
}

TEST(TextLayout, PathsKeepTheirBytesAndTextsCannotDriveTheTerminal)
{
    EXPECT_EQ(
        TextLines({FromUtf8("caf\xE9.pptx"), 1, {}, {Pair(u"\x1B[31m\t\r\x7F", {}, 1, 0)}}, SlidesAndNotes(), finding),
        "caf\xE9.pptx: 1 found\n"
        "    \"\\x1B[31m\\t\\r\\x7F\"  slides 1\n");
}

TEST(TextLayout, ColorsFrameTheTextWithoutChangingIt)
{
    EXPECT_EQ(TextLines(FailedFile(u"a.pptx", u"damaged"), SlidesAndNotes(), {Command::Find, false, true}),
              "\x1b[1ma.pptx\x1b[0m: \x1b[31mfailed\x1b[0m: damaged\n");
}

TEST(TextLayout, TheSummaryTellsOneFromMany)
{
    RunSummary summary;
    summary.Add({u"a", 1, {}, {Pair(u"cat", u"dog", 1, 0)}});
    EXPECT_EQ(TextLine(summary, replacing), "1 file: 1 changed, 0 unchanged, 0 failed; 1 occurrence replaced\n");

    summary.Add(FailedFile(u"c", u"damaged"));
    summary.Add({u"a", 1, {}, {Pair(u"cat", u"dog", 1, 0)}});
    EXPECT_EQ(TextLine(summary, finding), "3 files: 2 with hits, 0 without, 1 failed; 2 occurrences found\n");
}

TEST(TextLayout, BackupCommandsSayWhatTheyDid)
{
    EXPECT_EQ(TextLines(BackupReport{1, u"a.pptx", u"a..bak", {}}, {Command::Restore, false, false}),
              "a.pptx: restored from a..bak\n");
    EXPECT_EQ(TextLines(BackupReport{1, u"a.pptx", u"a..bak", {}}, {Command::Clean, false, false}),
              "a.pptx: removed a..bak\n");
    EXPECT_EQ(TextLines(BackupReport{2, u"a.pptx", {}, {}}, {Command::Clean, true, false}), "a.pptx: no backup\n");
    EXPECT_EQ(TextLines(BackupReport{0, u"a.pptx", {}, u"no"}, {Command::Clean, false, false}), "a.pptx: failed: no\n");

    BackupSummary summary;
    summary.Add({1, u"a", u"b", {}});
    EXPECT_EQ(TextLine(summary, {Command::Restore, false, false}),
              "1 file: 1 restored, 0 without a backup, 0 failed\n");
}

}  // namespace
}  // namespace tessarine::batch
