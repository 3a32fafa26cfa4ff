#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "batch/ReportJson.h"
#include "batch/Shard.h"
#include "platform/String.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

/// What a JSON report says besides its files, as ReportFile finds it.
struct ReportFacts {
    bool isCut = false;     ///< It ends without a summary, as that of a run that was killed.
    bool replaces = false;  ///< As far as that shows: a replace without any change may look like a find.
    bool isDryRun = false;
    bool isNumbered = false;            ///< Its files have numbers: it is the report of a shard.
    std::int64_t files = 0;             ///< That it tells of.
    std::int64_t lastNumber = 0;        ///< Of its last file.
    std::optional<ShardFacts> shard{};  ///< Of a report that isn't cut.
    std::int64_t notProcessed = 0;
    std::int64_t skippedLinks = 0;
    std::optional<Engine> engine{};
    std::vector<String> warnings{};
};

/// A report of find, replace or run in a file, in JSON (docs/batch.md). One line of it at a time is in memory.
///
/// What is none, or is of a later version, is refused (Refusal.h) with the file and the line.
class ReportFile
{
public:
    /// Reads the whole file once, so that a fault in it is found before anything is done with it.
    explicit ReportFile(const String& path);

    const String& Path() const { return path_; }
    const ReportFacts& Facts() const { return facts_; }

    /// The next file of the report, of a run that replaces or only finds; nothing at its end.
    std::optional<FileReport> Next(bool replaces);

private:
    std::optional<Json> NextLine();
    void TakeFile(const Json& line);
    void TakeSummary(const Json& summary);
    void TakeShard(const Json& shard);
    void Rewind();
    [[noreturn]] void RefuseLine(const String& reason) const;

    String path_;
    std::ifstream file_;
    std::int64_t lineNumber_ = 0;  // of the line read last
    ReportFacts facts_;
};

}  // namespace tessarine::batch
