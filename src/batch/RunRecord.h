#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "batch/FilesOfRun.h"
#include "batch/JobFiles.h"
#include "batch/Shard.h"
#include "files/FileDescriptor.h"
#include "files/FileState.h"
#include "files/HeldFolder.h"
#include "report/FileReport.h"

namespace tessarine::batch
{

class PreparedRun;

/// The record of a run as it goes (docs/formats/record.md): its files, which of them were begun, and what became of
/// those that are done. A run that was killed goes on where its record ends.
///
/// What is recorded lasts: a file is noted as begun on the disk before it is touched in a run that changes files. Begun
/// and Done may come from several threads. Files are named by their index among those of the run.
class RunRecord
{
public:
    /// Opens the record that the run's call names, and makes it when it is missing. Refuses (Refusal.h) a file that is
    /// no record, that of another run, and one that a run is at. Raises as ClassicFileFailure tells.
    explicit RunRecord(const PreparedRun& run);
    ~RunRecord();
    RunRecord(const RunRecord&) = delete;
    RunRecord& operator=(const RunRecord&) = delete;

    /// The files of the run: those that the record knows, else those that `collect` gives, which are recorded. A file
    /// that was in hand when a run was killed, and is not as it was by then, is refused.
    const FilesOfRun& Files(const std::function<FilesOfRun()>& collect);

    bool HasDone() const { return !done_.empty(); }
    bool IsDone(std::size_t file) const { return done_.contains(file); }
    FileReport ReportOf(std::size_t file) const;  ///< Of one that is done.

    void Begun(std::size_t file, const String& path);
    void Done(std::size_t file, const FileReport& report);

private:
    struct Line {
        std::uint64_t offset = 0;
        std::size_t size = 0;
    };

    void Load();
    void TakeLine(const std::string& line, std::uint64_t offset);
    void Write(const std::string& line);
    void Flush();

    const String path_;
    const std::string run_;
    const bool replaces_;
    const bool changesFiles_;
    const bool needsLastChange_;
    HeldFolder folder_;
    FileDescriptor file_;
    FilesOfRun files_;
    bool hasFiles_ = false;                               // all of them
    std::unordered_map<std::size_t, Line> done_;          // where their reports lie
    std::unordered_map<std::size_t, std::string> begun_;  // and not done; their states
    std::mutex mutex_;                                    // of what is written
};

}  // namespace tessarine::batch
