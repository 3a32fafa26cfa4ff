#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "engine/CounterStatuses.h"
#include "engine/SearchFunctions.h"
#include "files/FileLock.h"
#include "files/Files.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/Project.h"
#include "saving/FileDateTime.h"
#include "saving/RunJournal.h"

namespace tessarine
{

/// One call of Project::Search: takes the files through PowerPoint, one after the other.
///
/// What becomes of a failure depends on where the loop is. The loop switches the mode itself and does not switch it
/// back between files:
///
///   set-up, first file until its open   General    logged, then sorted by number as an open failure; served once
///   open, revision, processing          Captured   passed over; the open failure is sorted by number
///   after an open failure               Captured   passed over, until the next file's end
///   after a processed file              None       leaves Search; the end steps do not run
///   after the general handler           None       leaves Search
///
/// A replace run locks each file from before its backup to its report, a dry run, too, so that it meets what the run
/// itself would meet. A file that can't be locked, because another
/// run or another program has it, goes the way of one that could not be opened, and nothing is done to it.
class RunLoop
{
public:
    RunLoop(Project& project, const std::shared_ptr<FindAndReplaceItems>& vFindAndReplaceList,
            const std::shared_ptr<OptionSetting>& vOptionSettings);

    /// Runs to the end, or raises in mode None.
    void Run();

private:
    enum class Mode { General, Captured, None };

    /// Where the loop goes on. NextFile ends the loop after the last file.
    enum class Step { SetUp, Begin, Open, Process, Restore, Report, NextFile, End, Done };

    Step Perform(Step step);
    Step SetUp();     // takes over the options, starts PowerPoint, counts the files
    Step Begin();     // announces a file; cancel, lock, backup, attributes, dates
    Step Open();      // opens it and tells Project::Opened; a failure of either is sorted by its number
    Step Process();   // the revision number, then all pairs; a failure is passed over
    Step Restore();   // the dates, then the attributes
    Step Report();    // lets go of the file and tells the receivers; restarts PowerPoint when its time has come
    Step NextFile();  // moves on, or to the end
    Step End();       // ends PowerPoint and the hourglass

    Step HandleGenerally(const Failure& failure);  // logs, then as after an open failure; the mode is None from here on
    Step SortOpenFailure(const Failure& failure);  // PowerPoint lost, wrong password, or anything else
    void PutAwayGivenUp(const Failure& failure);   // a file that a person has given up: closed, and reported so
    void CloseUntouched();                         // a file that is open and is not to be processed

    void CreateApplication();
    void RestartAsPlanned();  // between two files, as the options ask
    void RestartAfterLoss();  // in the middle of opening a file
    void StartAgain();

    bool Replaces() const { return !engine_.mIsFindOnly; }
    bool IsRehearsal() const { return Replaces() && engine_.mIsDryRun; }
    bool Saves() const { return Replaces() && !engine_.mIsDryRun; }
    void TidyFolder();        // of what killed runs have left, once for each folder
    void MakeBackup() const;  // under the name of BackupTargetOf, whatever stands there
    void NoteForNextStart();  // in the journal, before the file's attributes or dates change
    void PutBackDatesAndAttributes();
    void PutBackAttributes();  // a failure is a warning
    void LetGo();              // of the file that the loop was at

    ProjectOptions& Options() const;
    powerpoint::Application& Application() const;
    void SetDisplayAlerts();
    void ReportUnprocessed(const String& error);  // a result of the loop's own, with a text and no pairs
    // to Project::FailurePassedOver, whose own failure is passed over
    void TellPassedOver(const Failure& failure) const;

    /// One statement under the mode in force: captured failures are passed over, others travel up.
    template <class Body>
    void Statement(Body&& body) const
    {
        if (mode_ == Mode::Captured)
            Skip(body);
        else
            body();
    }

    Project& project_;
    const std::shared_ptr<FindAndReplaceItems> list_;      // null for the project's own
    const std::shared_ptr<OptionSetting> optionSettings_;  // handed on to ProcessFile, which does not use it
    SearchFunctions engine_;
    Mode mode_ = Mode::General;

    std::int32_t index_ = 0;               // position in FilesToProcess from 1, never beyond bound_ + 1
    std::int16_t bound_ = 0;               // how many files there were when the run began
    std::int32_t processedFileCount_ = 0;  // also those that failed: a restart counts them all

    // Intended: these are not cleared between files. A file whose open fails is reported with the result of the file
    // before, as receivers of the event expect.
    String path_;
    std::shared_ptr<CounterStatuses> result_;
    String attributeBits_;
    FileTimes savedTimes_;
    bool isSavedUnchanged_ = false;  // the file was saved, and holds the same bytes as before

    // Of the file that the loop is at; nothing before its beginning and after its end.
    std::optional<FileAttributes> savedAttributes_;  // cleared, as no other file may ever get them
    std::optional<LoggedFile> loggedFile_;
    std::optional<FileLock> lock_;
    RunJournal journal_;
};

}  // namespace tessarine
