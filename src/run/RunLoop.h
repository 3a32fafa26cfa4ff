#pragma once

#include <cstdint>
#include <memory>

#include "engine/CounterStatuses.h"
#include "engine/SearchFunctions.h"
#include "model/Project.h"
#include "platform/FileDateTime.h"
#include "platform/Files.h"
#include "platform/Treatments.h"

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
    Step SetUp();
    Step Begin();
    Step Open();
    Step Process();
    Step Restore();
    Step Report();
    Step NextFile();
    Step End();

    Step HandleGenerally(const Failure& failure);
    Step SortOpenFailure(const Failure& failure);

    void CreateApplication();
    void RestartAsPlanned();
    void RestartAfterLoss();
    void StartAgain();

    ProjectOptions& Options() const;
    powerpoint::Application& Application() const;
    void SetDisplayAlerts();
    void ReportUnprocessed(const String& error);
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
    const std::shared_ptr<FindAndReplaceItems> list_;  // null for the project's own
    const std::shared_ptr<OptionSetting> optionSettings_;
    SearchFunctions engine_;
    Mode mode_ = Mode::General;

    std::int32_t index_ = 0;  // position in FilesToProcess from 1, never beyond bound_ + 1
    std::int16_t bound_ = 0;
    std::int32_t processedFileCount_ = 0;

    // Intended: nothing here is cleared between files. A file whose open fails is reported with the result of the file
    // before, as receivers of the event expect.
    String path_;
    std::shared_ptr<CounterStatuses> result_;
    FileAttributes savedAttributes_;
    String attributeBits_;
    FileTimes savedTimes_;
};

}  // namespace tessarine
