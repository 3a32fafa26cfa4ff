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

String CheckedPattern(std::string_view pattern)
{
    try {
        // Made for its failure alone; the run makes its own.
        (void)FilePattern(FromUtf8(pattern));
    } catch (const Failure&) {
        Refuse("--pattern: \"" + std::string(pattern) +
               "\" is not a pattern: a \"[\" has no end, or a range runs backwards");
    }
    return FromUtf8(pattern);
}

void TakePatterns(OptionValues& values, const std::string& argument)
{
    std::string_view rest = argument;
    while (!rest.empty()) {
        // The separator of a job's patterns, so that no pattern can hold one.
        const std::string_view pattern = rest.substr(0, rest.find(';'));
        if (!pattern.empty())
            values.call.patterns.push_back(CheckedPattern(pattern));
        rest.remove_prefix(std::min(rest.size(), pattern.size() + 1));
    }
    // Asked of all patterns so far: an empty one after another does no harm.
    if (values.call.patterns.empty())
        Refuse("--pattern: the pattern is empty");
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

// Below the two texts that it borrows: constants of a file are made in their order.
const std::array<OptionRow, 35> rows{{
    {"--replace", "", false, Only(Command::Run), "What to do",
     "Replace and save the files; without it the run only finds.",
     [](OptionValues& values, const std::string&) { values.call.replacesOfJob = true; }},
    {"--dry-run", "", false, Only(Command::Replace) | Only(Command::Run), "What to do",
     "Report what a replace would do, and write nothing: no file, no backup, no date.",
     [](OptionValues& values, const std::string&) { values.call.dryRun = true; }},

    {"--find", "TEXT", true, DescribesJob, "What to look for",
     "Text to look for, taken literally. Repeat it for several texts.", TakeFind},
    {"--with", "TEXT", true, Only(Command::Replace) | Only(Command::JobMake), "What to look for",
     "Text to put in its place; the n-th --with belongs to the n-th --find. May be empty.",
     [](OptionValues& values, const std::string& argument) {
         values.withs.push_back(CheckedText("--with", argument));
     }},
    {"--list", "FILE", false, DescribesJob, "What to look for",
     "Take the pairs from a list file of 18 columns (.xlsx .xls .csv .tab) in place of\n"
     "--find and --with. There each has its own places and switches; --in takes the place\n"
     "of them, --match-case and --whole-word hold for all.",
     TakeList},
    {"--pairs", "FILE", false, DescribesJob, "What to look for",
     "Take the pairs from a file of two columns (.csv .tsv .json .xlsx), or from standard\n"
     "input for -, in place of --find and --with. With a first row of names there may be\n"
     "more columns: find, with, case, word, in.",
     TakePairFile},
    {"--match-case", "", false, DescribesJob, "What to look for", "Tell capital from small letters.",
     [](OptionValues& values, const std::string&) { values.call.setting.MatchCase = true; }},
    {"--whole-word", "", false, DescribesJob, "What to look for", "Leave a text alone that is part of a longer word.",
     [](OptionValues& values, const std::string&) { values.call.setting.MatchWholeWord = true; }},

    {"--in", "NAME,...", true, DescribesJob, "Where in a presentation",
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
     [](OptionValues& values, const std::string& argument) { SwitchOn(values.call.setting, argument); }},

    {"--backup", "", false, Only(Command::Replace) | Only(Command::JobMake) | Only(Command::Run),
     "How to treat the files",
     "Copy each file beside itself before it is changed (\"restore\" brings it back). The copy\n"
     "of an earlier run stays; --backup=numbered makes a new one in each run.",
     TakeBackup, "numbered"},
    {"--any-backup", "", false, Only(Command::Restore) | Only(Command::Clean), "How to treat the files",
     "Take backups that are not in the folder's record, too: those of older versions and of\n"
     "the desktop, and those that were changed.",
     [](OptionValues& values, const std::string&) { values.call.anyBackup = true; }},
    {"--keep-date", "", false, DescribesJob, "How to treat the files", "Give each file its old dates back.",
     [](OptionValues& values, const std::string&) { values.call.keepDate = true; }},
    {"--in-place", "", false, Saves, "How to treat the files",
     "Write into a file whose owner, access list or attributes a new file could not have, or\n"
     "whose folder is closed to new files; without it such a file is reported as failed.",
     [](OptionValues& values, const std::string&) { values.call.inPlace = true; }},
    {"--in-place-links", "", false, Saves, "How to treat the files",
     "Write into a file that has several names (hard links), so that all of them show the\n"
     "new text; without it the others keep the old one.",
     [](OptionValues& values, const std::string&) { values.call.inPlaceLinks = true; }},
    {"--skip-signed", "", false, Only(Command::Replace) | Only(Command::Run), "How to treat the files",
     "Leave files with a digital signature as they are, and report those that would have\n"
     "changed as failed; without it the signature is removed.",
     [](OptionValues& values, const std::string&) { values.call.skipSigned = true; }},
    {"--read-only", "", false, DescribesJob | Only(Command::Restore), "How to treat the files",
     "Process read-only files too; without it they are reported as failed.",
     [](OptionValues& values, const std::string&) { values.call.readOnly = true; }},
    {"--revision", "NAME", false, DescribesJob, "How to treat the files",
     "Raise the number in this custom property of every saved file.", TakeRevision},
    {"--revision-by", "NUMBER", false, DescribesJob, "How to treat the files", "Raise it by this number (default: 1).",
     TakeRevisionBy},
    {"--restart-after", "N", false, DescribesJob, "How to treat the files",
     "Start the presentation program anew after every N files.", TakeRestartAfter},
    {"--engine", "NAME", false, Runs | Only(Command::Run), "How to treat the files",
     "What opens and changes them: \"powerpoint\", an installed one, or \"builtin\", our own\n"
     "(default: PowerPoint where it can be started).",
     TakeEngine},
    {"--count", "", false, DescribesJob, "How to treat the files", "Count every occurrence (the default).",
     [](OptionValues& values, const std::string&) { values.countGiven = true; }},
    {"--no-count", "", false, DescribesJob, "How to treat the files",
     "Let a find stop at the first occurrence in each text.",
     [](OptionValues& values, const std::string&) { values.noCountGiven = true; }},

    {"--recurse", "", false, TakesFiles | Only(Command::JobMake), "Which files", "Go into subfolders of a folder.",
     [](OptionValues& values, const std::string&) { values.call.recurse = true; }},
    {"--follow", "", false, TakesFiles | Only(Command::Run), "Which files",
     "Follow links to subfolders, too; without it a note tells how many there are.",
     [](OptionValues& values, const std::string&) { values.call.follow = true; }},
    {"--pattern", "PATTERN", true, TakesFiles, "Which files",
     "Names to take from a folder (default: '*.ppt*'); repeat it for several, or put ';'\nbetween them.", TakePatterns},
    {"--files-from", "FILE", false, TakesFiles | Only(Command::JobMake), "Which files",
     "Take further paths from FILE, one a line; - reads standard input.", TakeFilesFrom},

    {"-o", "JOB.tsq", false, Only(Command::JobMake), "Result", "The project file to write; an older one is replaced.",
     TakeOutput},

    {"--format", formatArgument, false, TakesFiles | Only(Command::Run) | Only(Command::JobShow), "Report", formatHelp,
     TakeFormat},
    {"--verbose", "", false, TakesFiles | Only(Command::Run), "Report",
     "Name the files without an occurrence too (text format).",
     [](OptionValues& values, const std::string&) { values.call.verbose = true; }},
    {"--show", "", false, Runs | Only(Command::Run), "Report",
     "Show every hit: where it stands, and the text around it.",
     [](OptionValues& values, const std::string&) { values.call.show = true; }},
    {"--context", "N", false, Runs | Only(Command::Run), "Report",
     "With --show or --report: up to N characters of text on either side of a hit, from 0\nto 1000 (default: 60).",
     TakeContext},
    {"--max-hits", "N", false, Runs | Only(Command::Run), "Report",
     "With --show or --report: the first N hits of each file, and how many more there are\n(default: 1000; 0 shows "
     "all).",
     TakeMaxHits},
    {"--report", "FILE", true, Runs | Only(Command::Run), "Report",
     "Keep the report with its hits in FILE, too: a web page (.html) or a table for\n"
     "spreadsheets (.csv). Repeat it for both.",
     TakeReport},
    {"--exit-code", "", false, Runs | Only(Command::Run), "Report",
     "End with 3 when nothing was found; without it that is 0.",
     [](OptionValues& values, const std::string&) { values.call.exitCode = true; }},
    // Answered before any row is looked for; this one is for the help, and refuses a value.
    {"--help", "", false, EveryCommand, "Report", "Show this help.", nullptr},
}};

}  // namespace

std::span<const OptionRow> OptionTable()
{
    return rows;
}

}  // namespace tessarine::batch
