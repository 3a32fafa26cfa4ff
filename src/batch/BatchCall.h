#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/Shard.h"
#include "model/OptionSetting.h"
#include "platform/String.h"
#include "report/Engine.h"
#include "saving/SaveTerms.h"

namespace tessarine::batch
{

/// What the first words of a command line ask for.
enum class Command { Find, Replace, Restore, Clean, Run, JobShow, JobMake, ListConvert, ReportMerge };

struct ReportFormat;

/// What a run does for a file that may have backups of earlier runs.
enum class BackupNaming {
    First,     ///< Keeps the first backup that a file ever got; makes one where there is none.
    Numbered,  ///< Makes a new one in each run, under the next free number (BackupNames.h).
};

/// When standard output gets colors.
enum class ColorUse {
    Auto,    ///< On a terminal that takes them, unless the environment forbids it (Terminal.h).
    Always,  ///< Into files and pipes as well, whatever the environment says.
    Never
};

/// One --find and its --with.
struct TextPair {
    String find;
    String with;  ///< Empty in a find.
};

/// What a command line asks for, checked as far as it can be without looking at a file.
struct BatchCall {
    Command command = Command::Find;

    String job;                  ///< The project file of Run, JobShow and JobMake, as given.
    bool replacesOfJob = false;  ///< A Run replaces; else it only finds.

    std::vector<TextPair> pairs;     ///< Of --find and --with; empty with a list, with a file of pairs and for a Run.
    std::optional<String> list;      ///< A list file that the pairs are taken from instead, or that ListConvert reads.
    std::optional<String> pairFile;  ///< A file of plain pairs in place of a list; "-" is standard input.
    String newList;                  ///< The list file that ListConvert writes.
    /// Where every pair is looked for, and how its text is compared. A Run has it of its job; with a list, nowhere
    /// stands for the pairs' own places.
    OptionSetting setting;

    bool count = true;    ///< Every occurrence; else a find stops at the first one of each text.
    bool backup = false;  ///< Files are copied beside themselves first.
    BackupNaming backupNaming = BackupNaming::First;  ///< Which of several runs' backups there are.
    bool anyBackup = false;                           ///< Restore and Clean take backups without a record, too.
    bool inPlace = false;           ///< Files are written into where a new file could not have all that is theirs.
    bool inPlaceLinks = false;      ///< Files with several names are written into, so that all names stay together.
    bool skipSigned = false;        ///< Files with a digital signature are not changed.
    bool dryRun = false;            ///< A replace goes all its way but writes nothing.
    bool keepDate = false;          ///< Files get their old dates back.
    bool readOnly = false;          ///< Read-only files are processed as well.
    String revision;                ///< Name of the custom property; empty = no revision number.
    double revisionBy = 1;          ///< What is added to the revision number.
    std::int32_t restartAfter = 0;  ///< 0 = never
    std::optional<Engine> engine;   ///< Nothing for PowerPoint where it can be started, else the built-in one.

    std::vector<String> paths;        ///< Files and folders, as given.
    std::optional<String> filesFrom;  ///< A list of further paths; "-" is standard input.
    std::vector<String> patterns;     ///< File name patterns of folder scans.
    bool nullEndsPaths = false;       ///< A NUL ends each path of that list, not the end of a line.
    std::vector<String> excluded;     ///< Patterns of what is left out of folder scans, files and folders.
    bool hidden = false;              ///< Folder scans take what has a name that begins with a dot.
    bool recurse = false;             ///< Into the subfolders of folders.
    bool follow = false;              ///< Also through links to folders.

    std::optional<Shard> shard;  ///< Which share of the files is taken; nothing for all.
    String plan;                 ///< The file of the division into shares; empty for none.
    String record;               ///< The file of the run's record; empty for none.

    const ReportFormat* format = nullptr;  ///< Null for the first of ReportFormats, the one for people.
    ColorUse color = ColorUse::Auto;
    bool quiet = false;           ///< No progress; a text report has failures and warnings alone.
    bool verbose = false;         ///< Text reports name unchanged files too.
    bool show = false;            ///< Reports tell the hits of each file.
    std::int32_t context = 60;    ///< UTF-16 units of text on either side of a hit.
    std::int64_t maxHits = 1000;  ///< Hits of a file that are told; 0 for all of them.
    bool exitCode = false;        ///< A run without a hit has an exit status of its own.
    std::vector<String> reports;  ///< Files to keep the report of a run in, with its hits (RunReportWriter.h).

    std::int32_t jobs = 1;  ///< Files that are processed at a time, each by a worker; 0 = one for each core.
    std::vector<std::string> arguments;  ///< As they came, for those workers.

    /// The hits of each file are wanted in one of the reports.
    bool TakesHits() const { return show || !reports.empty(); }
};

/// When the call lets a file be written into in place of being replaced, and which files it saves at all.
inline SaveTerms SaveTermsOf(const BatchCall& call)
{
    return {.inPlaceLinks = call.inPlaceLinks,
            .inPlaceWhereNotKept = call.inPlace,
            .inPlaceWhereFolderIsClosed = call.inPlace,
            .keepsSigned = call.skipSigned};
}

}  // namespace tessarine::batch
