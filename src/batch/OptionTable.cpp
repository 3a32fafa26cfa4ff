#include "batch/OptionTable.h"

#include <array>
#include <charconv>
#include <cmath>

#include "batch/FilePattern.h"
#include "batch/ListFiles.h"
#include "batch/Locations.h"
#include "batch/PairFiles.h"
#include "batch/Refusal.h"
#include "batch/ReportFormats.h"
#include "platform/Failure.h"
#include "platform/Utf16.h"
#include "report/RunReportWriter.h"

namespace tessarine::batch
{

namespace
{

/// Text to search for or to insert must be text that a presentation can hold: valid UTF-8 without U+FFFE and U+FFFF.
String CheckedText(std::string_view option, const std::string& argument)
{
    const String text = FromUtf8(argument);
    for (std::size_t at = 0; at < text.size(); at += IsPairAt(text, at) ? 2 : 1) {
        const char32_t codePoint = CodePointAt(text, at);
        // A byte that is not valid UTF-8 comes as a lone surrogate (FromUtf8).
        if (IsSurrogate(codePoint) || codePoint == 0xFFFE || codePoint == 0xFFFF)
            Refuse(std::string(option) + ": the text is not valid UTF-8");
    }
    return text;
}

void TakeFind(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--find: the text to look for is empty");
    values.finds.push_back(CheckedText("--find", argument));
}

void TakeList(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--list: the name of the list is empty");
    values.call.list = FromUtf8(argument);
    if (!IsListName(*values.call.list))
        Refuse("--list: \"" + argument + "\" is not a list: its name must end in .xlsx, .xls, .csv or .tab");
}

void TakePairFile(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--pairs: the name of the file is empty");
    values.call.pairFile = FromUtf8(argument);
    if (argument != "-" && !IsPairFileName(*values.call.pairFile))
        Refuse("--pairs: \"" + argument + "\" is not a file of pairs: its name must end in .csv, .tsv, .json or .xlsx");
}

String CheckedPattern(std::string_view option, std::string_view pattern)
{
    try {
        // Made for its failure alone; the run makes its own.
        (void)FilePattern(FromUtf8(pattern));
    } catch (const Failure&) {
        Refuse(std::string(option) + ": \"" + std::string(pattern) +
               "\" is not a pattern: a \"[\" has no end, or a range runs backwards");
    }
    return FromUtf8(pattern);
}

/// Adds the patterns of one argument to those before it.
void TakePatternsOf(std::string_view option, const std::string& argument, std::vector<String>& patterns)
{
    std::string_view rest = argument;
    while (!rest.empty()) {
        // The separator of a job's patterns, so that no pattern can hold one.
        const std::string_view pattern = rest.substr(0, rest.find(';'));
        if (!pattern.empty())
            patterns.push_back(CheckedPattern(option, pattern));
        rest.remove_prefix(std::min(rest.size(), pattern.size() + 1));
    }
    // Asked of all patterns so far: an empty one after another does no harm.
    if (patterns.empty())
        Refuse(std::string(option) + ": the pattern is empty");
}

void TakePatterns(OptionValues& values, const std::string& argument)
{
    TakePatternsOf("--pattern", argument, values.call.patterns);
}

void TakeExcluded(OptionValues& values, const std::string& argument)
{
    // It would never match, and a person would think that it does.
    if (argument.find('/') != std::string::npos)
        Refuse("--exclude: \"" + argument + "\" has a \"/\"; a pattern is compared with names, not with paths");
    TakePatternsOf("--exclude", argument, values.call.excluded);
}

void TakeBackup(OptionValues& values, const std::string& variant)
{
    values.call.backup = true;
    if (variant.empty())
        return;
    // A project file has one bit for backups.
    if (values.call.command == Command::JobMake)
        Refuse("--backup=numbered: a saved job can't hold it; give it to \"run\"");
    values.call.backupNaming = BackupNaming::Numbered;
}

void TakeFilesFrom(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--files-from: the name of the list is empty");
    values.call.filesFrom = FromUtf8(argument);
}

void TakeOutput(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("-o: the name of the job is empty");
    // The save would make ".tsq" in the folder of it, a file that nobody sees.
    if (argument.ends_with('/'))
        Refuse("-o: \"" + argument + "\" is a folder");
    values.call.job = FromUtf8(argument);
}

void TakeRevision(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--revision: the name of the property is empty");
    values.call.revision = CheckedText("--revision", argument);
}

/// The number is written with a point in every locale, so that a script means the same everywhere.
void TakeRevisionBy(OptionValues& values, const std::string& argument)
{
    const char* const end = argument.data() + argument.size();
    const auto [stop, error] = std::from_chars(argument.data(), end, values.call.revisionBy);
    // "inf" and "nan" are read as numbers, too.
    if (error != std::errc() || stop != end || !std::isfinite(values.call.revisionBy))
        Refuse("--revision-by: \"" + argument + "\" is not a number");
    values.revisionByGiven = true;
}

/// Whether the whole argument is a number of at least `least`, which `value` then is.
template <class Number>
bool TakeWholeNumber(const std::string& argument, Number least, Number& value)
{
    const char* const end = argument.data() + argument.size();
    const auto [stop, error] = std::from_chars(argument.data(), end, value);
    return error == std::errc() && stop == end && value >= least;
}

void TakeRestartAfter(OptionValues& values, const std::string& argument)
{
    if (!TakeWholeNumber(argument, 1, values.call.restartAfter))
        Refuse("--restart-after: \"" + argument + "\" is not a whole number from 1 up");
}

constexpr std::int32_t mostJobs = 256;

void TakeJobs(OptionValues& values, const std::string& argument)
{
    if (!TakeWholeNumber(argument, 0, values.call.jobs) || values.call.jobs > mostJobs)
        Refuse("--jobs: \"" + argument + "\" is not a whole number from 0 to " + std::to_string(mostJobs));
}

/// "I/N", both whole numbers from 1 up.
void TakeShard(OptionValues& values, const std::string& argument)
{
    const std::size_t slash = argument.find('/');
    Shard shard;
    if (slash == std::string::npos || !TakeWholeNumber(argument.substr(0, slash), 1, shard.index) ||
        !TakeWholeNumber(argument.substr(slash + 1), 1, shard.count) || shard.index > shard.count)
        Refuse("--shard: \"" + argument + "\" is not a share such as 2/8, the second of eight");
    values.call.shard = shard;
}

void TakePlan(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--plan: the name of the file is empty");
    values.call.plan = FromUtf8(argument);
}

void TakeRecord(OptionValues& values, const std::string& argument)
{
    if (argument.empty())
        Refuse("--record: the name of the file is empty");
    values.call.record = FromUtf8(argument);
}

void TakeContext(OptionValues& values, const std::string& argument)
{
    if (!TakeWholeNumber(argument, 0, values.call.context) || values.call.context > 1000)
        Refuse("--context: \"" + argument + "\" is not a whole number from 0 to 1000");
    values.contextGiven = true;
}

void TakeMaxHits(OptionValues& values, const std::string& argument)
{
    if (!TakeWholeNumber(argument, std::int64_t{0}, values.call.maxHits))
        Refuse("--max-hits: \"" + argument + "\" is not a whole number from 0 up");
    values.maxHitsGiven = true;
}

void TakeReport(OptionValues& values, const std::string& argument)
{
    values.call.reports.push_back(FromUtf8(argument));
    if (!RunReportKindOf(values.call.reports.back()))
        Refuse("--report: the name of \"" + argument + "\" must end in .html or .csv");
}

void TakeEngine(OptionValues& values, const std::string& argument)
{
    for (const Engine engine : {Engine::PowerPoint, Engine::BuiltIn}) {
        if (argument == NameOf(engine))
            values.call.engine = engine;
    }
    if (!values.call.engine)
        Refuse("--engine: \"" + argument + "\" is neither powerpoint nor builtin");
}

void TakeColor(OptionValues& values, const std::string& argument)
{
    if (argument != "auto" && argument != "always" && argument != "never")
        Refuse("--color: \"" + argument + "\" is neither auto, always nor never");
    values.call.color = argument == "always"  ? ColorUse::Always
                        : argument == "never" ? ColorUse::Never
                                              : ColorUse::Auto;
}

/// One column of the table of formats, with `separator` between its texts and `last` before the last one.
std::string OfAllFormats(std::string_view ReportFormat::*column, std::string_view separator, std::string_view last)
{
    std::string texts;
    for (const ReportFormat& format : ReportFormats) {
        if (&format != &ReportFormats.front())
            texts += &format == &ReportFormats.back() ? last : separator;
        texts += format.*column;
    }
    return texts;
}

void TakeFormat(OptionValues& values, const std::string& argument)
{
    values.call.format = ReportFormatNamed(argument);
    if (!values.call.format)
        Refuse("--format: \"" + argument + "\" is neither " + OfAllFormats(&ReportFormat::name, ", ", " nor "));
}

// What the help says about --format, from the table of formats.
const std::string formatArgument = OfAllFormats(&ReportFormat::name, "|", "|");
const std::string formatHelp = OfAllFormats(&ReportFormat::help, ", ", ", or ") + ".";
const std::string formatChoices = OfAllFormats(&ReportFormat::name, " ", " ");

const std::string placeChoices = [] {
    std::string names = LocationNames();
    std::erase(names, ',');
    return names + " all";
}();

constexpr char none = '\0';  // the letter of an option without a short form

// Below the texts that it borrows: constants of a file are made in their order.
const std::array<OptionRow, 45> rows{{
    {"--replace", none, "", false, Only(Command::Run), "What to do",
     "Replace and save the files; else the run only finds.", "",
     [](OptionValues& values, const std::string&) { values.call.replacesOfJob = true; }},
    {"--dry-run", 'n', "", false, Only(Command::Replace) | Only(Command::Run), "What to do",
     "Report what a replace would do, and write nothing.",
     "Report what a replace would do, and write nothing: no file, no backup, no date.",
     [](OptionValues& values, const std::string&) { values.call.dryRun = true; }},

    {"--find", none, "TEXT", true, DescribesJob, "What to look for", "Text to look for, taken literally; repeatable.",
     "Text to look for, taken literally. Repeat it for several texts.", TakeFind},
    {"--with", none, "TEXT", true, Only(Command::Replace) | Only(Command::JobMake), "What to look for",
     "Text to put in its place; may be empty.",
     "Text to put in its place; the n-th --with belongs to the n-th --find. May be\nempty.",
     [](OptionValues& values, const std::string& argument) {
         values.withs.push_back(CheckedText("--with", argument));
     }},
    {"--list", none, "FILE", false, DescribesJob, "What to look for", "Take the pairs from a list of 18 columns.",
     "Take the pairs from a list file of 18 columns (.xlsx .xls .csv .tab) in place of\n"
     "--find and --with. There each has its own places and switches; --in takes the\n"
     "place of them, --match-case and --whole-word hold for all.",
     TakeList},
    {"--pairs", none, "FILE", false, DescribesJob, "What to look for", "Take the pairs from a file of two columns.",
     "Take the pairs from a file of two columns (.csv .tsv .json .xlsx), or from\n"
     "standard input for -, in place of --find and --with. With a first row of names\n"
     "there may be more columns: find, with, case, word, in.",
     TakePairFile},
    {"--ignore-case", 'i', "", false, DescribesJob, "What to look for",
     "Capital letters equal small ones (the default).",
     "Take capital and small letters for the same (the default). The pairs of a file\n"
     "say it themselves.",
     [](OptionValues& values, const std::string&) { values.ignoreCaseGiven = true; }},
    {"--match-case", 's', "", false, DescribesJob, "What to look for", "Tell capital from small letters.", "",
     [](OptionValues& values, const std::string&) { values.call.setting.MatchCase = true; }},
    {"--whole-word", 'w', "", false, DescribesJob, "What to look for", "Leave alone what is part of a longer word.",
     "Leave a text alone that is part of a longer word.",
     [](OptionValues& values, const std::string&) { values.call.setting.MatchWholeWord = true; }},

    {"--in",
     none,
     "NAME,...",
     true,
     DescribesJob,
     "Where in a presentation",
     "Places to look in (default: slides,shapes,notes).",
     "Places to look in (default: slides,shapes,notes), or all of them with \"all\":\n"
     "  slides                   titles and other placeholders\n"
     "  shapes                   text boxes and other shapes with text\n"
     "  notes                    notes pages\n"
     "  hyperlinks               addresses of links\n"
     "  links                    sources of linked objects\n"
     "  header, footer           slide headers and footers\n"
     "  builtin-properties, custom-properties\n"
     "  master-per-slide         masters of the slides\n"
     "  master-per-presentation  all masters of the file\n"
     "  title-master, handout-master, notes-master",
     [](OptionValues& values, const std::string& argument) { SwitchOn(values.call.setting, argument); },
     {},
     placeChoices},

    {"--backup", none, "", false, Only(Command::Replace) | Only(Command::JobMake) | Only(Command::Run),
     "How to treat the files", "Copy each file beside itself before it is changed.",
     "Copy each file beside itself before it is changed (\"restore\" brings it back).\n"
     "The copy of an earlier run stays; --backup=numbered makes a new one in each run.",
     TakeBackup, "numbered"},
    {"--any-backup", none, "", false, Only(Command::Restore) | Only(Command::Clean), "How to treat the files",
     "Take backups that are not in the record, too.",
     "Take backups that are not in the folder's record, too: those of older versions\n"
     "and of the desktop, and those that were changed.",
     [](OptionValues& values, const std::string&) { values.call.anyBackup = true; }},
    {"--keep-date", none, "", false, DescribesJob, "How to treat the files", "Give each file its old dates back.", "",
     [](OptionValues& values, const std::string&) { values.call.keepDate = true; }},
    {"--in-place", none, "", false, Saves, "How to treat the files", "Write into files that can't be replaced.",
     "Write into a file whose owner, access list or attributes a new file could not\n"
     "have, or whose folder is closed to new files; without it such a file is reported\n"
     "as failed.",
     [](OptionValues& values, const std::string&) { values.call.inPlace = true; }},
    {"--in-place-links", none, "", false, Saves, "How to treat the files", "Write into files that have several names.",
     "Write into a file that has several names (hard links), so that all of them show\n"
     "the new text; without it the others keep the old one.",
     [](OptionValues& values, const std::string&) { values.call.inPlaceLinks = true; }},
    {"--skip-signed", none, "", false, Only(Command::Replace) | Only(Command::Run), "How to treat the files",
     "Leave files with a digital signature as they are.",
     "Leave files with a digital signature as they are, and report those that would\n"
     "have changed as failed; without it the signature is removed.",
     [](OptionValues& values, const std::string&) { values.call.skipSigned = true; }},
    {"--read-only", none, "", false, DescribesJob | Only(Command::Restore), "How to treat the files",
     "Process read-only files too.", "Process read-only files too; without it they are reported as failed.",
     [](OptionValues& values, const std::string&) { values.call.readOnly = true; }},
    {"--revision", none, "NAME", false, DescribesJob, "How to treat the files",
     "Raise the number in this custom property.", "Raise the number in this custom property of every saved file.",
     TakeRevision},
    {"--revision-by", none, "NUMBER", false, DescribesJob, "How to treat the files",
     "Raise it by this number (default: 1).", "", TakeRevisionBy},
    {"--restart-after", none, "N", false, DescribesJob, "How to treat the files",
     "Start the program anew after every N files.", "Start the presentation program anew after every N files.",
     TakeRestartAfter},
    {"--jobs", 'j', "N", false, Runs | Only(Command::Run), "How to treat the files",
     "Process N files at a time; 0: one for each core.",
     "Process N files at a time, each in a process of its own (default: 1; 0: one\n"
     "for each core). The report stays the same. PowerPoint takes one at a time.",
     TakeJobs},
    {"--shard", none, "I/N", false, Runs | Only(Command::Run), "How to treat the files",
     "Take one share of the files: 2/8 is the second.",
     "Take the share I of N of the files, for N machines with one job: 2/8 is the second\n"
     "of eight. The shares are the same everywhere.",
     TakeShard},
    {"--plan", none, "FILE", false, Runs | Only(Command::Run), "How to treat the files",
     "Divide the files as FILE tells; made when missing.",
     "With --shard: divide the files as FILE tells, by their sizes. The first of the\n"
     "shards makes it, the others take the files from there.",
     TakePlan},
    {"--record", none, "FILE", false, Runs | Only(Command::Run), "How to treat the files",
     "Keep a record in FILE, and go on after it.",
     "Keep a record of the run in FILE as it goes. The same call once more goes on where\n"
     "the record ends, and reports the whole run.",
     TakeRecord},
    {"--engine",
     none,
     "NAME",
     false,
     Runs | Only(Command::Run),
     "How to treat the files",
     "What opens the files: powerpoint or builtin.",
     "What opens and changes them: \"powerpoint\", an installed one, or \"builtin\", our\n"
     "own (default: PowerPoint where it can be started).",
     TakeEngine,
     {},
     "powerpoint builtin"},
    {"--count", none, "", false, DescribesJob, "How to treat the files", "Count every occurrence (the default).", "",
     [](OptionValues& values, const std::string&) { values.countGiven = true; }},
    {"--no-count", none, "", false, DescribesJob, "How to treat the files",
     "Let a find stop at the first one in each text.", "Let a find stop at the first occurrence in each text.",
     [](OptionValues& values, const std::string&) { values.noCountGiven = true; }},

    {"--recurse", 'r', "", false, TakesFiles | Only(Command::JobMake), "Which files", "Go into subfolders of a folder.",
     "", [](OptionValues& values, const std::string&) { values.call.recurse = true; }},
    {"--follow", none, "", false, TakesFiles | Only(Command::Run), "Which files", "Follow links to subfolders, too.",
     "Follow links to subfolders, too; without it a note tells how many there are.",
     [](OptionValues& values, const std::string&) { values.call.follow = true; }},
    {"--pattern", none, "PATTERN", true, TakesFiles, "Which files", "Names to take from a folder (default: '*.ppt*').",
     "Names to take from a folder (default: '*.ppt*'); repeat it for several, or put\n"
     "';' between them.",
     TakePatterns},
    {"--exclude", none, "PATTERN", true, TakesFiles | Only(Command::Run), "Which files",
     "Names of files and folders to leave out.",
     "Leave out files and whole subfolders of such names; repeat it for several, or put\n"
     "';' between them.",
     TakeExcluded},
    {"--hidden", none, "", false, TakesFiles | Only(Command::Run), "Which files", "Take hidden files and folders, too.",
     "Take what is hidden in a folder, too: files and subfolders whose names begin with\n"
     "a dot.",
     [](OptionValues& values, const std::string&) { values.call.hidden = true; }},
    {"--files-from", none, "FILE", false, TakesFiles | Only(Command::JobMake), "Which files",
     "Take further paths from FILE, one a line.", "Take further paths from FILE, one a line; - reads standard input.",
     TakeFilesFrom},
    {"--null", '0', "", false, TakesFiles, "Which files", "A NUL ends each path of --files-from.",
     "A NUL ends each path of --files-from, not the end of a line.",
     [](OptionValues& values, const std::string&) { values.call.nullEndsPaths = true; }},

    {"--output", 'o', "JOB.tsq", false, Only(Command::JobMake), "Result", "The project file to write.",
     "The project file to write; an older one is replaced.", TakeOutput},

    {"--format",
     none,
     formatArgument,
     false,
     TakesFiles | Only(Command::Run) | Only(Command::JobShow) | Merges,
     "Report",
     "For people (text, the default) or programs (json).",
     formatHelp,
     TakeFormat,
     {},
     formatChoices},
    {"--color",
     none,
     "WHEN",
     false,
     TakesFiles | Only(Command::Run) | Merges,
     "Report",
     "Use colors: auto (the default), always or never.",
     "Use colors: \"always\", \"never\", or \"auto\" (the default) on a terminal, unless the\n"
     "environment has NO_COLOR or TERM=dumb.",
     TakeColor,
     {},
     "auto always never"},
    {"--quiet", 'q', "", false, EveryCommand & ~Only(Command::JobShow), "Report",
     "Report only failures and warnings; no progress.",
     "Report only files that failed or have a warning (text format); no progress, and\n"
     "no summary.",
     [](OptionValues& values, const std::string&) { values.call.quiet = true; }},
    {"--verbose", 'v', "", false, TakesFiles | Only(Command::Run) | Merges, "Report",
     "Name the files without an occurrence, too.", "Name the files without an occurrence too (text format).",
     [](OptionValues& values, const std::string&) { values.call.verbose = true; }},
    {"--show", none, "", false, Runs | Only(Command::Run) | Merges, "Report", "Show every hit with the text around it.",
     "Show every hit: where it stands, and the text around it.",
     [](OptionValues& values, const std::string&) { values.call.show = true; }},
    {"--context", none, "N", false, Runs | Only(Command::Run), "Report",
     "Characters around a hit, 0 to 1000 (default: 60).",
     "With --show or --report: up to N characters of text on either side of a hit, from\n0 to 1000 (default: 60).",
     TakeContext},
    {"--max-hits", none, "N", false, Runs | Only(Command::Run), "Report",
     "Hits shown of each file (default: 1000; 0: all).",
     "With --show or --report: the first N hits of each file, and how many more there\n"
     "are (default: 1000; 0 shows all).",
     TakeMaxHits},
    {"--report", none, "FILE", true, Runs | Only(Command::Run) | Merges, "Report",
     "Keep the report in FILE, .html or .csv; repeatable.",
     "Keep the report with its hits in FILE, too: a web page (.html) or a table for\n"
     "spreadsheets (.csv). Repeat it for both.",
     TakeReport},
    {"--exit-code", none, "", false, Runs | Only(Command::Run) | Merges, "Report", "End with 3 when nothing was found.",
     "End with 3 when nothing was found; without it that is 0.",
     [](OptionValues& values, const std::string&) { values.call.exitCode = true; }},
    // Answered before any row is looked for; this one is for the help, and refuses a value.
    {"--help", 'h', "", false, EveryCommand, "Report", "Show the help; -h shows a short one.", "", nullptr},
}};

}  // namespace

std::span<const OptionRow> OptionTable()
{
    return rows;
}

}  // namespace tessarine::batch
