#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "batch/JobFiles.h"
#include "batch/WorkerOfRun.h"

namespace tessarine::batch
{

/// Takes files through several workers, which are processes of this program with a run of their own each (Worker.h),
/// and gives exactly one report for each file, in order, as ReportedRun does in this process.
///
/// A worker has one file in hand. Its death fails that file alone; another worker takes its place. Files that are one
/// file under several names are never in hand at the same time.
class WorkerRun
{
public:
    using Sink = std::function<void(const FileReport&)>;

    /// With at most that many workers, and no more than there are files.
    WorkerRun(WorkerTerms terms, std::size_t workers, Sink sink);

    /// Told of the files in hand whenever they change, the one begun last at the end. May be empty.
    std::function<void(const std::vector<String>& files)> InHand;

    /// Told of each file before a worker gets it, by its index; false has it fail, and no other begun. May be empty, as
    /// the next, which is told what became of a file as soon as that is known, maybe long before its turn in the
    /// report. Both come from several threads.
    std::function<bool(std::size_t file)> Begins;
    std::function<void(std::size_t file, const FileReport& report)> Done;

    /// Told of a line for the user. May be empty.
    std::function<void(const std::string& line)> Note;

    /// Asked before each file; true stops before it. Comes from several threads, one at a time. May be empty.
    std::function<bool()> CancelRequested;

    /// Returns the number of files that a cancel left without a report. Raises why no worker could be started, before
    /// any file was touched. The other callbacks come on the thread that calls this.
    std::size_t Run(const std::vector<JobFile>& files);

private:
    class Threads;

    WorkerTerms terms_;
    std::size_t workers_;
    Sink sink_;
};

/// How many cores this process may use.
std::size_t CoreCount();

}  // namespace tessarine::batch
