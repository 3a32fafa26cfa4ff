#pragma once

#include <optional>
#include <string>

#include "batch/BatchCall.h"
#include "batch/Shard.h"
#include "model/OptionSetting.h"
#include "platform/String.h"

namespace tessarine
{
class Project;
struct FileReport;
struct RunSummary;
}  // namespace tessarine

namespace tessarine::batch
{

struct BackupReport;
struct BackupSummary;

/// What a report needs to know of the call.
struct ReportStyle {
    Command command = Command::Find;    ///< What is done: Find, Replace, Restore or Clean.
    OptionSetting setting{};            ///< The places whose counts are named.
    bool verbose = false;               ///< Unchanged files get a line too, in a report for people.
    bool colors = false;                ///< Standard output takes colors.
    bool hits = false;                  ///< The hits of a file are told.
    bool dryRun = false;                ///< The replace that is reported has written nothing.
    std::optional<ShardFacts> shard{};  ///< The share of a job's files that is reported.
};

/// What a command says of its files, in one format; ReportFormats.h lists the formats.
///
/// A report only words what it is given. Each member gives whole lines with their ends, as bytes for standard output;
/// empty when there is nothing to say. A command calls OfFile for each file as soon as it is done, in order, and AtEnd
/// once after the last one; also when there was no file, or when a cancel left some out.
class Report
{
public:
    Report() = default;
    virtual ~Report() = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    /// Of "find", "replace" and "run". AtStart comes before all files, and only where the engine is to be told.
    virtual std::string AtStart(Engine engine) = 0;
    virtual std::string OfFile(const FileReport& file) = 0;
    virtual std::string AtEnd(const RunSummary& summary) = 0;

    /// Of "restore" and "clean".
    virtual std::string OfFile(const BackupReport& file) = 0;
    virtual std::string AtEnd(const BackupSummary& summary) = 0;

    /// All that "job show" prints. `path` is the job's file as it was named.
    virtual std::string OfJob(const String& path, const Project& project) = 0;
};

}  // namespace tessarine::batch
