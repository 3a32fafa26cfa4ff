#include "batch/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/Commit.h"
#include "batch/Locations.h"
#include "batch/OptionTable.h"
#include "batch/ReportFormats.h"
#include "model/ListColumns.h"
#include "model/SearchLocations.h"

namespace tessarine::batch
{
namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

BatchCall CallOf(const std::vector<std::string>& arguments)
{
    const auto read = ReadCommandLine(arguments);
    if (const auto* end = std::get_if<EarlyEnd>(&read)) {
        ADD_FAILURE() << end->error << end->output;
        return {};
    }
    return std::get<BatchCall>(read);
}

EarlyEnd EndOf(const std::vector<std::string>& arguments)
{
    const auto read = ReadCommandLine(arguments);
    if (const auto* end = std::get_if<EarlyEnd>(&read))
        return *end;
    ADD_FAILURE() << "taken as valid";
    return {};
}

/// Whether a text holds a word after a blank and before one of `ends`: "links" alone stands in "hyperlinks", too.
bool HasWord(const std::string& text, const std::string& word, std::string_view ends)
{
    const std::string sought = " " + word;
    for (std::size_t at = text.find(sought); at != std::string::npos; at = text.find(sought, at + 1)) {
        const std::size_t end = at + sought.size();
        if (end < text.size() && ends.find(text[end]) != std::string_view::npos)
            return true;
    }
    return false;
}

std::vector<std::string> LocationsOf(const OptionSetting& setting)
{
    std::vector<std::string> names;
    for (const SearchLocation& location : SearchLocations) {
        if (setting.*location.isOn)
            names.emplace_back(location.name);
    }
    return names;
}

TEST(CommandLine, FindTakesTextsAndPaths)
{
    const BatchCall call = CallOf({"find", "--find", "Fabrikam", "decks", "--find=Contoso", "a.pptx"});

    EXPECT_EQ(call.command, Command::Find);
    ASSERT_EQ(call.pairs.size(), 2u);
    EXPECT_EQ(call.pairs[0].find, u"Fabrikam");
    EXPECT_EQ(call.pairs[1].find, u"Contoso");
    EXPECT_THAT(call.paths, ElementsAre(u"decks", u"a.pptx"));
}

TEST(CommandLine, TheNthWithBelongsToTheNthFind)
{
    const BatchCall call = CallOf({"replace", "--find", "a", "--find", "b", "--with", "1", "--with", "2", "x"});

    ASSERT_EQ(call.pairs.size(), 2u);
    EXPECT_EQ(call.pairs[0].with, u"1");
    EXPECT_EQ(call.pairs[1].with, u"2");
}

TEST(CommandLine, DefaultsAreThoseOfTheHelp)
{
    const BatchCall call = CallOf({"find", "--find", "a", "x"});

    EXPECT_THAT(LocationsOf(call.setting), ElementsAre("slides", "shapes", "notes"));
    EXPECT_TRUE(call.count);
    EXPECT_THAT(call.patterns, ElementsAre(u"*.ppt*"));
    EXPECT_EQ(call.revisionBy, 1);
    EXPECT_EQ(call.restartAfter, 0);
    EXPECT_EQ(call.format, nullptr);
    EXPECT_EQ(call.engine, std::nullopt);
    EXPECT_EQ(call.context, 60);
    EXPECT_EQ(call.maxHits, 1000);
    EXPECT_FALSE(call.show || call.dryRun);
    EXPECT_FALSE(call.backup || call.keepDate || call.readOnly || call.recurse || call.verbose);
    EXPECT_FALSE(call.quiet || call.hidden || call.nullEndsPaths);
    EXPECT_EQ(call.color, ColorUse::Auto);
    EXPECT_THAT(call.excluded, IsEmpty());
    EXPECT_FALSE(call.inPlace || call.inPlaceLinks || call.follow || call.anyBackup);
    EXPECT_EQ(call.backupNaming, BackupNaming::First);
    EXPECT_FALSE(call.setting.MatchCase || call.setting.MatchWholeWord);
}

TEST(CommandLine, TakesEveryOption)
{
    const BatchCall call =
        CallOf({"replace",      "--find",          "a",          "--with",        "b",
                "--match-case", "--whole-word",    "--no-count", "--backup",      "--keep-date",
                "--read-only",  "--recurse",       "--pattern",  "*.pptx;*.potx", "--pattern=Q?.ppsx",
                "--files-from", "list.txt",        "--revision", "Rev",           "--revision-by",
                "0.5",          "--restart-after", "20",         "--format",      "json",
                "--verbose",    "--engine",        "builtin"});

    EXPECT_EQ(call.engine, Engine::BuiltIn);
    EXPECT_TRUE(call.setting.MatchCase && call.setting.MatchWholeWord);
    EXPECT_FALSE(call.count);
    EXPECT_TRUE(call.backup && call.keepDate && call.readOnly && call.recurse && call.verbose);
    EXPECT_THAT(call.patterns, ElementsAre(u"*.pptx", u"*.potx", u"Q?.ppsx"));
    EXPECT_EQ(call.filesFrom, u"list.txt");
    EXPECT_EQ(call.revision, u"Rev");
    EXPECT_EQ(call.revisionBy, 0.5);
    EXPECT_EQ(call.restartAfter, 20);
    EXPECT_EQ(call.format, ReportFormatNamed("json"));
    EXPECT_THAT(call.paths, IsEmpty());
}

TEST(CommandLine, ShortFormsStandForLongOnes)
{
    const BatchCall call = CallOf({"replace", "--find", "a", "--with", "b", "-r", "-s", "-w", "-n", "-v", "x"});
    const BatchCall quiet = CallOf({"clean", "-q", "-0", "--files-from", "list"});

    EXPECT_TRUE(call.recurse && call.setting.MatchCase && call.setting.MatchWholeWord && call.dryRun && call.verbose);
    EXPECT_TRUE(quiet.quiet && quiet.nullEndsPaths);
    EXPECT_FALSE(CallOf({"find", "--find", "a", "-i", "x"}).setting.MatchCase);
}

TEST(CommandLine, ShortSwitchesMayStandTogether)
{
    const BatchCall call = CallOf({"find", "-rsw", "--find", "a", "x", "-vr"});

    EXPECT_TRUE(call.recurse && call.setting.MatchCase && call.setting.MatchWholeWord && call.verbose);
    EXPECT_THAT(call.paths, ElementsAre(u"x"));
}

TEST(CommandLine, AShortFormTakesItsValueAttachedOrApart)
{
    const std::vector<std::string> make{"job", "make", "--find", "a", "--with", "b", "x"};
    const auto jobOf = [&](std::vector<std::string> options) {
        options.insert(options.begin(), make.begin(), make.end());
        return CallOf(options).job;
    };

    EXPECT_EQ(jobOf({"-o", "-r"}), u"-r");
    EXPECT_EQ(jobOf({"-oj.tsq"}), u"j.tsq");
    EXPECT_EQ(jobOf({"-rwo", "j.tsq"}), u"j.tsq");
    EXPECT_EQ(jobOf({"--output=j.tsq"}), u"j.tsq");
}

TEST(CommandLine, NoTwoOptionsHaveOneLetter)
{
    std::string letters;
    for (const OptionRow& row : OptionTable()) {
        if (row.letter)
            letters += row.letter;
    }

    std::ranges::sort(letters);
    EXPECT_EQ(letters, "0hijnoqrsvw");
}

TEST(CommandLine, ColorsAreWantedAsTheCallSays)
{
    EXPECT_EQ(CallOf({"find", "--find", "a", "--color", "always", "x"}).color, ColorUse::Always);
    EXPECT_EQ(CallOf({"find", "--find", "a", "--color=never", "x"}).color, ColorUse::Never);
    EXPECT_EQ(CallOf({"find", "--find", "a", "--color", "auto", "x"}).color, ColorUse::Auto);
}

TEST(CommandLine, ExcludeTakesPatternsAndHiddenIsASwitch)
{
    const BatchCall call =
        CallOf({"find", "--find", "a", "--exclude", "old;draft*", "--exclude=*.ppt", "--hidden", "x"});

    EXPECT_THAT(call.excluded, ElementsAre(u"old", u"draft*", u"*.ppt"));
    EXPECT_TRUE(call.hidden);
    EXPECT_TRUE(CallOf({"run", "j.tsq", "--hidden", "decks"}).hidden);
}

TEST(CommandLine, InTakesNamesByCommaAndRepeated)
{
    EXPECT_THAT(LocationsOf(CallOf({"find", "--find", "a", "--in", "notes,links", "--in", "footer", "x"}).setting),
                ElementsAre("footer", "notes", "links"));
}

TEST(CommandLine, InTakesEveryNameThatReportsUse)
{
    for (const SearchLocation& location : SearchLocations)
        EXPECT_THAT(LocationsOf(CallOf({"find", "--find", "a", "--in", location.name, "x"}).setting),
                    ElementsAre(location.name));
    EXPECT_EQ(LocationsOf(CallOf({"find", "--find", "a", "--in", "all", "x"}).setting).size(), SearchLocations.size());
}

TEST(CommandLine, TakesArgumentsLiterally)
{
    EXPECT_EQ(CallOf({"find", "--find", "--with", "x"}).pairs[0].find, u"--with");
    EXPECT_EQ(CallOf({"find", "--find", "-x", "x"}).pairs[0].find, u"-x");
    EXPECT_EQ(CallOf({"find", "--find={}", "x"}).pairs[0].find, u"{}");
    EXPECT_EQ(CallOf({"find", "--find", "[a,b]", "x"}).pairs[0].find, u"[a,b]");
    EXPECT_EQ(CallOf({"find", "--find=a=b", "x"}).pairs[0].find, u"a=b");
    EXPECT_EQ(CallOf({"find", "--find", " a ", "x"}).pairs[0].find, u" a ");
    EXPECT_THAT(CallOf({"find", "--find", "a", "[a,b]", "clean", "-"}).paths, ElementsAre(u"[a,b]", u"clean", u"-"));
    EXPECT_THAT(CallOf({"find", "--find", "a", "--", "--help", "-x"}).paths, ElementsAre(u"--help", u"-x"));
}

TEST(CommandLine, AnEmptyWithIsAnEmptyReplacement)
{
    const BatchCall attached = CallOf({"replace", "--find", "a", "--with=", "x", "y"});
    const BatchCall apart = CallOf({"replace", "--find", "a", "--with", "", "x"});

    EXPECT_EQ(attached.pairs[0].with, u"");
    EXPECT_THAT(attached.paths, ElementsAre(u"x", u"y"));
    EXPECT_EQ(apart.pairs[0].with, u"");
}

TEST(CommandLine, TextIsUtf8AndPathsAreAnyBytes)
{
    const BatchCall call = CallOf({"find", "--find", "Zürich 😀", "caf\xE9.pptx"});

    EXPECT_EQ(call.pairs[0].find, u"Zürich 😀");
    EXPECT_EQ(ToUtf8(call.paths[0]), "caf\xE9.pptx");
}

TEST(CommandLine, RestoreAndCleanTakePathsAlone)
{
    EXPECT_EQ(CallOf({"restore", "--recurse", "x"}).command, Command::Restore);
    EXPECT_EQ(CallOf({"clean", "--pattern", "*.ppt", "--files-from", "-", "--format", "json"}).command, Command::Clean);
}

TEST(CommandLine, BackupsMayBeNumbered)
{
    const BatchCall plain = CallOf({"replace", "--find", "a", "--with", "b", "--backup", "x"});
    const BatchCall numbered = CallOf({"replace", "--find", "a", "--with", "b", "--backup=numbered", "x"});
    const BatchCall ofJob = CallOf({"run", "j.tsq", "--replace", "--backup=numbered"});

    EXPECT_TRUE(plain.backup && numbered.backup && ofJob.backup);
    EXPECT_EQ(plain.backupNaming, BackupNaming::First);
    EXPECT_EQ(numbered.backupNaming, BackupNaming::Numbered);
    EXPECT_EQ(ofJob.backupNaming, BackupNaming::Numbered);
}

TEST(CommandLine, RestoreMayTakeAnyBackupAndReadOnlyFiles)
{
    const BatchCall call = CallOf({"restore", "--any-backup", "--read-only", "--recurse", "--follow", "x"});

    EXPECT_TRUE(call.anyBackup && call.readOnly && call.follow);
    EXPECT_TRUE(CallOf({"clean", "--any-backup", "x"}).anyBackup);
}

TEST(CommandLine, AReplaceMayWriteInPlace)
{
    const BatchCall call = CallOf({"replace", "--find", "a", "--with", "b", "--in-place", "x"});
    const BatchCall links = CallOf({"run", "j.tsq", "--replace", "--in-place-links"});

    EXPECT_TRUE(call.inPlace && !call.inPlaceLinks);
    EXPECT_TRUE(links.inPlaceLinks && !links.inPlace);
    EXPECT_TRUE(CallOf({"restore", "--in-place", "--in-place-links", "x"}).inPlace);
    EXPECT_TRUE(SaveTermsOf(call).inPlaceWhereNotKept && SaveTermsOf(call).inPlaceWhereFolderIsClosed);
    EXPECT_FALSE(SaveTermsOf(call).inPlaceLinks);
    EXPECT_TRUE(SaveTermsOf(links).inPlaceLinks && !SaveTermsOf(links).inPlaceWhereNotKept);
}

TEST(CommandLine, AReportMayShowHits)
{
    const BatchCall found =
        CallOf({"find", "--find", "a", "--show", "--context", "0", "--max-hits=9223372036854775807", "x"});
    const BatchCall ofJob = CallOf({"run", "j.tsq", "--context=1000", "--max-hits", "0", "--show"});

    EXPECT_TRUE(found.show && ofJob.show);
    EXPECT_EQ(found.context, 0);
    EXPECT_EQ(ofJob.context, 1000);
    EXPECT_EQ(found.maxHits, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ofJob.maxHits, 0);
}

TEST(CommandLine, AReportMayBeKept)
{
    const BatchCall call =
        CallOf({"find", "--find", "a", "--report", "r.html", "--report=out/R.CSV", "--context", "9", "x"});

    EXPECT_EQ(call.reports, (std::vector<String>{u"r.html", u"out/R.CSV"}));
    EXPECT_FALSE(call.show);
    EXPECT_EQ(call.context, 9);
}

TEST(CommandLine, AReplaceMayBeTriedDry)
{
    EXPECT_TRUE(CallOf({"replace", "--find", "a", "--with", "b", "--backup", "--dry-run", "x"}).dryRun);
    EXPECT_TRUE(CallOf({"run", "j.tsq", "--replace", "--dry-run"}).dryRun);
}

TEST(CommandLine, ARunTakesAJobAndPathsInItsPlace)
{
    const BatchCall call = CallOf({"run", "--verbose", "job.tsq", "--replace", "decks", "--format=json"});

    EXPECT_EQ(call.command, Command::Run);
    EXPECT_EQ(call.job, u"job.tsq");
    EXPECT_TRUE(call.replacesOfJob && call.verbose);
    EXPECT_THAT(call.paths, ElementsAre(u"decks"));
    EXPECT_FALSE(CallOf({"run", "job.tsq"}).replacesOfJob);
}

TEST(CommandLine, ACommandMayBeTwoWords)
{
    const BatchCall shown = CallOf({"job", "show", "--format", "json", "job.tsq"});
    const BatchCall made = CallOf({"job", "make", "--find", "a", "--with", "b", "-o", "job.tsq", "decks"});

    EXPECT_EQ(shown.command, Command::JobShow);
    EXPECT_EQ(shown.job, u"job.tsq");
    EXPECT_EQ(made.command, Command::JobMake);
    EXPECT_EQ(made.job, u"job.tsq");
    EXPECT_EQ(made.pairs[0].with, u"b");
    EXPECT_THAT(made.paths, ElementsAre(u"decks"));
}

TEST(CommandLine, AListTakesThePlaceOfThePairs)
{
    const BatchCall call = CallOf({"replace", "--list", "pairs.Xls", "decks"});
    const BatchCall elsewhere = CallOf({"find", "--list=a.tab", "--in", "notes", "--match-case", "decks"});

    EXPECT_EQ(call.list, u"pairs.Xls");
    EXPECT_THAT(call.pairs, IsEmpty());
    EXPECT_THAT(LocationsOf(call.setting), IsEmpty());
    EXPECT_THAT(LocationsOf(elsewhere.setting), ElementsAre("notes"));
    EXPECT_TRUE(elsewhere.setting.MatchCase);
    EXPECT_EQ(CallOf({"job", "make", "--list", "a.csv", "-o", "job.tsq", "decks"}).list, u"a.csv");
}

TEST(CommandLine, AConversionTakesTwoLists)
{
    const BatchCall call = CallOf({"list", "convert", "a.xls", "--", "-b.CSV"});

    EXPECT_EQ(call.command, Command::ListConvert);
    EXPECT_EQ(call.list, u"a.xls");
    EXPECT_EQ(call.newList, u"-b.CSV");
    EXPECT_THAT(call.paths, IsEmpty());
}

struct InvalidCall {
    const char* name;
    std::vector<std::string> arguments;
    const char* reason;
};

class InvalidCalls : public testing::TestWithParam<InvalidCall>
{
};

TEST_P(InvalidCalls, EndWithStatusTwoAndOneLineThatSaysWhy)
{
    const EarlyEnd end = EndOf(GetParam().arguments);

    EXPECT_EQ(end.exitStatus, 2);
    EXPECT_THAT(end.output, IsEmpty());
    EXPECT_THAT(end.error, StartsWith("tessarine-batch: "));
    EXPECT_THAT(end.error, HasSubstr(GetParam().reason));
    EXPECT_EQ(std::count(end.error.begin(), end.error.end(), '\n'), 1);
    EXPECT_THAT(end.error, EndsWith("\n"));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, InvalidCalls,
    testing::Values(
        InvalidCall{"NoCommand", {}, "a command is missing"},
        InvalidCall{"UnknownCommand", {"search", "x"}, "there is no command \"search\""},
        InvalidCall{"HalfACommand", {"job"}, "there is no command \"job\": it is job show or job make"},
        InvalidCall{"HalfACommandAndAFile", {"job", "x.tsq"}, "there is no command \"job x.tsq\""},
        InvalidCall{"RunWithoutAJob", {"run", "--replace"}, "no job is named"},
        InvalidCall{"RunWithAPair", {"run", "--find", "a", "x.tsq"}, "--find is not an option of run"},
        InvalidCall{"ShowOfTwoJobs", {"job", "show", "a.tsq", "b.tsq"}, "takes one project file"},
        InvalidCall{"ReplaceInFind", {"find", "--find", "a", "--replace", "x"}, "--replace is not an option of find"},
        InvalidCall{"MakeWithoutAName", {"job", "make", "--find", "a", "--with", "b", "x"}, "-o is missing"},
        InvalidCall{"HalfAListCommand", {"list", "a.xls"}, "there is no command \"list a.xls\": it is list convert"},
        InvalidCall{"ListAndFind", {"find", "--list", "a.xls", "--find", "a", "x"}, "give one or the other"},
        InvalidCall{"ListAndWith", {"replace", "--list", "a.xls", "--with", "a", "x"}, "give one or the other"},
        InvalidCall{"TwoLists", {"find", "--list", "a.xls", "--list", "b.xls", "x"}, "--list is given twice"},
        InvalidCall{"EmptyList", {"find", "--list", "", "x"}, "the name of the list is empty"},
        InvalidCall{"PairsOfAnotherKind", {"find", "--pairs", "a.txt", "x"}, "must end in .csv, .tsv, .json or .xlsx"},
        InvalidCall{"PairsWithoutName", {"find", "--pairs=", "x"}, "--pairs: the name of the file is empty"},
        InvalidCall{
            "PairsAndList", {"find", "--pairs", "a.csv", "--list", "a.xls", "x"}, "take the place of each other"},
        InvalidCall{
            "PairsAndFind", {"find", "--pairs", "a.csv", "--find", "a", "x"}, "--pairs takes the place of --find"},
        InvalidCall{
            "PairsAndFilesFromInput", {"find", "--pairs", "-", "--files-from", "-"}, "both read standard input"},
        InvalidCall{"ListOfAnotherKind", {"find", "--list", "a.ods", "x"}, "must end in .xlsx, .xls, .csv or .tab"},
        InvalidCall{"ListInARun", {"run", "--list", "a.xls", "x.tsq"}, "--list is not an option of run"},
        InvalidCall{"ListWithoutAPath", {"find", "--list", "a.xls"}, "no file or folder is named"},
        InvalidCall{"ConvertOneList", {"list", "convert", "a.xls"}, "takes two list files"},
        InvalidCall{"ConvertThreeLists", {"list", "convert", "a.xls", "b.csv", "c.tab"}, "takes two list files"},
        InvalidCall{"ConvertFromAnotherKind", {"list", "convert", "a.ods", "b.csv"}, "\"a.ods\" is not a list"},
        InvalidCall{"ConvertToAnotherKind", {"list", "convert", "a.xls", "b.txt"}, "\"b.txt\" is not a list"},
        InvalidCall{"NoFind", {"find", "x"}, "--find is missing"},
        InvalidCall{"EmptyFind", {"find", "--find", "", "x"}, "the text to look for is empty"},
        InvalidCall{"EmptyFindByEquals", {"find", "--find=", "x"}, "the text to look for is empty"},
        InvalidCall{"FindWithoutValue", {"find", "x", "--find"}, "--find needs a value: --find TEXT"},
        InvalidCall{
            "MoreFinds", {"replace", "--find", "a", "--find", "b", "--with", "c", "x"}, "2 --find and 1 --with"},
        InvalidCall{"NoWith", {"replace", "--find", "a", "x"}, "every --find needs its --with"},
        InvalidCall{"WithInFind", {"find", "--find", "a", "--with", "b", "x"}, "--with is not an option of find"},
        InvalidCall{"BackupInClean", {"clean", "--backup", "x"}, "--backup is not an option of clean"},
        InvalidCall{"UnknownOption", {"find", "--fnd", "a", "x"}, "there is no option --fnd"},
        InvalidCall{"ShortOption", {"find", "-f", "a", "x"}, "there is no option -f"},
        InvalidCall{"UnknownLocation", {"find", "--find", "a", "--in", "slides,tables", "x"}, "no location \"tables\""},
        InvalidCall{"EmptyLocation", {"find", "--find", "a", "--in", "slides,", "x"}, "no location \"\""},
        InvalidCall{"CountBothWays", {"find", "--find", "a", "--count", "--no-count", "x"}, "contradict each other"},
        InvalidCall{"TwoFormats", {"find", "--find", "a", "--format", "json", "--format", "text", "x"}, "given twice"},
        InvalidCall{"UnknownFormat", {"find", "--find", "a", "--format", "xml", "x"}, "neither text nor json"},
        InvalidCall{"SwitchWithValue", {"find", "--find", "a", "--keep-date=no", "x"}, "--keep-date takes no value\n"},
        InvalidCall{"OtherVariant",
                    {"replace", "--find", "a", "--with", "b", "--backup=no", "x"},
                    "--backup takes no value but --backup=numbered"},
        InvalidCall{"BackupInFind", {"find", "--find", "a", "--backup", "x"}, "--backup is not an option of find"},
        InvalidCall{"NumbersInAJob",
                    {"job", "make", "--find", "a", "--with", "b", "--backup=numbered", "-o", "j.tsq", "x"},
                    "a saved job can't hold it"},
        InvalidCall{"BackupInARunThatFinds", {"run", "--backup", "j.tsq"}, "--backup needs --replace"},
        InvalidCall{"InPlaceInARunThatFinds", {"run", "--in-place", "j.tsq"}, "--in-place needs --replace"},
        InvalidCall{
            "InPlaceLinksInARunThatFinds", {"run", "--in-place-links", "j.tsq"}, "--in-place-links needs --replace"},
        InvalidCall{"InPlaceInFind", {"find", "--find", "a", "--in-place", "x"}, "--in-place is not an option of find"},
        InvalidCall{"AnyBackupInReplace",
                    {"replace", "--find", "a", "--with", "b", "--any-backup", "x"},
                    "--any-backup is not an option of replace"},
        InvalidCall{"RevisionByAlone", {"find", "--find", "a", "--revision-by", "1", "x"}, "needs --revision"},
        InvalidCall{"RevisionByText",
                    {"find", "--find", "a", "--revision", "R", "--revision-by", "1x", "x"},
                    "\"1x\" is not a number"},
        InvalidCall{"RevisionByInfinity",
                    {"find", "--find", "a", "--revision", "R", "--revision-by", "inf", "x"},
                    "\"inf\" is not a number"},
        InvalidCall{
            "EngineUnknown", {"find", "--find", "a", "--engine", "libre", "x"}, "neither powerpoint nor builtin"},
        InvalidCall{"EngineOfARestore", {"restore", "--engine", "builtin", "x"}, "is not an option of restore"},
        InvalidCall{"RestartAfterNone", {"find", "--find", "a", "--restart-after", "0", "x"}, "from 1 up"},
        InvalidCall{"RestartAfterTooMany", {"find", "--find", "a", "--restart-after", "2147483648", "x"}, "from 1 up"},
        InvalidCall{"ContextBelowZero",
                    {"find", "--find", "a", "--show", "--context", "-1", "x"},
                    "--context: \"-1\" is not a whole number from 0 to 1000"},
        InvalidCall{"ContextTooLong", {"find", "--find", "a", "--show", "--context", "1001", "x"}, "from 0 to 1000"},
        InvalidCall{"ContextOfText", {"find", "--find", "a", "--show", "--context", "6o", "x"}, "from 0 to 1000"},
        InvalidCall{"ContextEmpty", {"find", "--find", "a", "--show", "--context=", "x"}, "from 0 to 1000"},
        InvalidCall{"ContextAlone", {"find", "--find", "a", "--context", "9", "x"}, "--context needs --show"},
        InvalidCall{"ContextOfARestore", {"restore", "--context", "9", "x"}, "--context is not an option of restore"},
        InvalidCall{"MaxHitsBelowZero",
                    {"find", "--find", "a", "--show", "--max-hits", "-1", "x"},
                    "--max-hits: \"-1\" is not a whole number from 0 up"},
        InvalidCall{
            "MaxHitsTooMany", {"find", "--find", "a", "--show", "--max-hits", "9223372036854775808", "x"}, "from 0 up"},
        InvalidCall{"MaxHitsAlone", {"run", "--max-hits", "9", "j.tsq"}, "--max-hits needs --show"},
        InvalidCall{"ReportOfAnotherKind",
                    {"find", "--find", "a", "--report", "r.pdf", "x"},
                    "--report: the name of \"r.pdf\" must end in .html or .csv"},
        InvalidCall{"ReportWithoutAName", {"find", "--find", "a", "--report=", "x"}, "must end in .html or .csv"},
        InvalidCall{"ReportOfARestore", {"restore", "--report", "r.csv", "x"}, "--report is not an option of restore"},
        InvalidCall{"ShowInAJob",
                    {"job", "make", "--find", "a", "--with", "b", "--show", "-o", "j.tsq", "x"},
                    "--show is not an option of job make"},
        InvalidCall{"DryFind", {"find", "--find", "a", "--dry-run", "x"}, "--dry-run is not an option of find"},
        InvalidCall{"DryRunThatFinds", {"run", "--dry-run", "j.tsq"}, "--dry-run needs --replace"},
        InvalidCall{"UnknownLetter", {"find", "--find", "a", "-rx", "x"}, "there is no option -x in -rx (see"},
        InvalidCall{"LongOptionWithOneDash", {"find", "-show", "x"}, "no option -show; did you mean \"--show\"? (see"},
        InvalidCall{"LetterOfAnotherCommand", {"find", "--find", "a", "-n", "x"}, "-n is not an option of find"},
        InvalidCall{"LetterWithoutValue", {"job", "make", "x", "-o"}, "--output needs a value: --output JOB.tsq"},
        InvalidCall{"NearCommand", {"replcae", "x"}, "no command \"replcae\"; did you mean \"replace\"? (see"},
        InvalidCall{"NearCommandOfTwoWords", {"jbo", "make"}, "no command \"jbo\"; did you mean \"job make\"? (see"},
        InvalidCall{"NearOption", {"find", "--recursive", "x"}, "no option --recursive; did you mean \"--recurse\"?"},
        InvalidCall{"OptionNearOneOfAnotherCommand", {"restore", "--wth", "x"}, "there is no option --wth (see"},
        InvalidCall{"NearLocation",
                    {"find", "--find", "a", "--in", "slide", "x"},
                    "\"slide\"; did you mean \"slides\"? The names are slides, hyperlinks,"},
        InvalidCall{"HelpOnNoCommand", {"help", "finde"}, "no command \"finde\"; did you mean \"find\"?"},
        InvalidCall{"HelpOnHalfACommand", {"help", "job"}, "it is job show or job make"},
        InvalidCall{"BothCases", {"find", "-is", "--find", "a", "x"}, "contradict each other"},
        InvalidCall{"CaseOfAList", {"find", "-i", "--list", "a.xls", "x"}, "the pairs of --list say themselves"},
        InvalidCall{"QuietAndVerbose", {"find", "-qv", "--find", "a", "x"}, "--quiet and --verbose contradict"},
        InvalidCall{"QuietAndShow", {"find", "-q", "--show", "--find", "a", "x"}, "--quiet and --show contradict"},
        InvalidCall{"NullAlone", {"find", "-0", "--find", "a", "x"}, "--null needs --files-from"},
        InvalidCall{"UnknownColor", {"find", "--find", "a", "--color", "yes", "x"}, "neither auto, always nor never"},
        InvalidCall{"ExcludedPath", {"find", "--find", "a", "--exclude", "a/b", "x"}, "with names, not with paths"},
        InvalidCall{"EmptyExclude", {"find", "--find", "a", "--exclude=", "x"}, "--exclude: the pattern is empty"},
        InvalidCall{"BrokenExclude", {"find", "--find", "a", "--exclude", "[a", "x"}, "--exclude: \"[a\" is not a"},
        InvalidCall{"HiddenOfAJob", {"run", "--hidden", "j.tsq"}, "--hidden needs a PATH"},
        InvalidCall{"ExcludeOfAJob", {"run", "--exclude", "a", "j.tsq", "--replace"}, "--exclude needs a PATH"},
        InvalidCall{"EmptyPattern", {"find", "--find", "a", "--pattern", ";", "x"}, "the pattern is empty"},
        InvalidCall{"BrokenPattern", {"find", "--find", "a", "--pattern", "[a.ppt", "x"}, "is not a pattern"},
        InvalidCall{"NoPath", {"find", "--find", "a"}, "no file or folder is named"},
        InvalidCall{"NoPathForRestore", {"restore"}, "no file or folder is named"},
        InvalidCall{"EmptyPath", {"find", "--find", "a", ""}, "a path is empty"},
        InvalidCall{"NotUtf8", {"find", "--find", "caf\xE9", "x"}, "not valid UTF-8"},
        InvalidCall{"Endless", {"replace", "--find", "cat", "--with", "a cat", "x"}, "never ends"},
        InvalidCall{"EndlessOnTwoLines",
                    {"replace", "--find", "c\nt", "--with", "a c\nt", "--find", "a", "--with", "b\na", "x"},
                    "never ends"},
        InvalidCall{"EndlessByCase", {"replace", "--find", "cat", "--with", "a Cat", "x"}, "never ends"}),
    [](const auto& row) { return row.param.name; });

TEST(CommandLine, APairThatEndsByItsOptionsIsTaken)
{
    EXPECT_EQ(CallOf({"replace", "--find", "cat", "--with", "a Cat", "--match-case", "x"}).pairs.size(), 1u);
    EXPECT_EQ(CallOf({"replace", "--find", "cat", "--with", "concat", "--whole-word", "x"}).pairs.size(), 1u);
    EXPECT_EQ(CallOf({"replace", "--find", "a.b", "--with", "w.a.b", "--in", "hyperlinks", "x"}).pairs.size(), 1u);
}

TEST(CommandLine, HelpAndVersionEndWithStatusZero)
{
    EXPECT_EQ(EndOf({"--help"}).exitStatus, 0);
    EXPECT_THAT(EndOf({"--help"}).output, HasSubstr("restore"));
    EXPECT_THAT(EndOf({"--version"}).output, StartsWith("tessarine-batch "));
    EXPECT_EQ(EndOf({"find", "--help"}).exitStatus, 0);
    EXPECT_THAT(EndOf({"find", "--help"}).error, IsEmpty());
}

TEST(CommandLine, TheVersionNamesTheCommitWhereItIsKnown)
{
    const std::string commit(Commit());

    const std::string version = EndOf({"--version"}).output;

    EXPECT_THAT(commit.size(), testing::AnyOf(0, 12));
    EXPECT_THAT(version, EndsWith(commit.empty() ? "\n" : " (commit " + commit + ")\n"));
}

TEST(CommandLine, HelpOfACommandNamesItsOptionsAndNoOther)
{
    const std::vector<std::pair<std::string, Command>> commands{
        {"find", Command::Find},        {"replace", Command::Replace},
        {"restore", Command::Restore},  {"clean", Command::Clean},
        {"run", Command::Run},          {"job show", Command::JobShow},
        {"job make", Command::JobMake}, {"list convert", Command::ListConvert}};
    for (const auto& [name, command] : commands) {
        std::vector<std::string> words{name.substr(0, name.find(' '))};
        if (words.front() != name)
            words.push_back(name.substr(words.front().size() + 1));
        words.emplace_back("--help");
        const std::string help = EndOf(words).output;
        for (const OptionRow& row : OptionTable()) {
            // With the blank after it: "--in" is how "--in-place" begins, too.
            const std::string forms =
                (row.letter ? std::string("-") + row.letter + ", " : "    ") + std::string(row.name);
            const bool shown = help.find("\n  " + forms + " ") != std::string::npos;
            EXPECT_EQ(shown, (row.commands & Only(command)) != 0) << name << " " << row.name;
        }
        EXPECT_THAT(help, HasSubstr("Examples:"));
    }
}

TEST(CommandLine, ShortHelpHasALineForEachOption)
{
    const std::string help = EndOf({"replace", "-h"}).output;

    EXPECT_THAT(help, StartsWith("Usage: tessarine-batch replace --find TEXT"));
    EXPECT_THAT(help, HasSubstr("\n  -r, --recurse             Go into subfolders of a folder.\n"));
    const auto options = std::ranges::count_if(
        OptionTable(), [](const OptionRow& row) { return (row.commands & Only(Command::Replace)) != 0; });
    // Besides them: usage, purpose, an empty line; an empty line and where more is said.
    EXPECT_EQ(std::ranges::count(help, '\n'), options + 5);
    EXPECT_EQ(EndOf({"replace", "-rh"}).output, help);
}

TEST(CommandLine, HelpIsACommandToo)
{
    EXPECT_EQ(EndOf({"help"}).output, EndOf({"--help"}).output);
    EXPECT_EQ(EndOf({"help", "find"}).output, EndOf({"find", "--help"}).output);
    EXPECT_EQ(EndOf({"help", "job", "show"}).output, EndOf({"job", "show", "--help"}).output);
    EXPECT_LT(EndOf({"-h"}).output.size(), EndOf({"help"}).output.size());
}

TEST(CommandLine, ShortHelpFitsInto80Columns)
{
    for (const OptionRow& row : OptionTable())
        EXPECT_THAT(row.brief, testing::AllOf(EndsWith("."), testing::Not(HasSubstr("\n"))));
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"-h"},
                                                      {"find", "-h"},
                                                      {"replace", "-h"},
                                                      {"restore", "-h"},
                                                      {"clean", "-h"},
                                                      {"run", "-h"},
                                                      {"job", "show", "-h"},
                                                      {"job", "make", "-h"},
                                                      {"list", "convert", "-h"}}) {
        std::istringstream help(EndOf(arguments).output);
        for (std::string line; std::getline(help, line);)
            EXPECT_LE(line.size(), 80u) << line;
    }
}

TEST(CommandLine, HelpNamesEveryLocationAndWhatIsNotSearched)
{
    const std::string help = EndOf({"find", "--help"}).output;

    for (const SearchLocation& location : SearchLocations)
        EXPECT_TRUE(HasWord(help, std::string(location.name), " ,\n")) << location.name << " in\n" << help;
    EXPECT_THAT(help, HasSubstr("groups, tables, charts"));
}

TEST(CommandLine, HelpNamesEveryColumnOfAList)
{
    const std::string help = EndOf({"list", "convert", "--help"}).output;

    EXPECT_THAT(help, HasSubstr("these " + std::to_string(ListColumnCount) + " headers"));
    for (const char16_t* header : ListHeaders)
        EXPECT_TRUE(HasWord(help, ToUtf8(header), ",\n")) << ToUtf8(header) << " in\n" << help;
}

TEST(CommandLine, HelpTellsTheFormatsOfReports)
{
    EXPECT_THAT(
        EndOf({"find", "--help"}).output,
        HasSubstr("      --format text|json    A report for people (the default), or one JSON object a line.\n"));
}

TEST(CommandLine, HelpFitsOnATerminal)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                      {"find", "--help"},
                                                      {"replace", "--help"},
                                                      {"restore", "--help"},
                                                      {"clean", "--help"},
                                                      {"run", "--help"},
                                                      {"job", "show", "--help"},
                                                      {"job", "make", "--help"},
                                                      {"list", "convert", "--help"}}) {
        std::istringstream help(EndOf(arguments).output);
        for (std::string line; std::getline(help, line);)
            EXPECT_LE(line.size(), 110u) << line;
    }
}

}  // namespace
}  // namespace tessarine::batch
