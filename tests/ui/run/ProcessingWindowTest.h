#pragma once

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QTest>

#include "app/ChosenLanguage.h"
#include "engine/CounterStatuses.h"
#include "platform/SystemTimer.h"
#include "support/ErrorLogRecorder.h"
#include "support/MessageRecorder.h"
#include "support/qt/ShellRecorder.h"
#include "support/qt/UserFolders.h"
#include "support/TemporaryFolder.h"
#include "ui/run/ElapsedTime.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/ResultReport.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

/// What a pair counted in a file: -1 for each location that is not named.
struct PairResult {
    String findWhat;
    std::map<Location, std::int32_t> counts;
};

/// The result of a file with these pairs.
std::shared_ptr<CounterStatuses> Counted(const String& path, const std::vector<PairResult>& pairs);
std::shared_ptr<CounterStatuses> NothingCounted(const String& path);
std::shared_ptr<CounterStatuses> NotProcessed(const String& path, const String& error);

/// A tree's rows as its view has them, with two blanks before a row for each level.
std::vector<std::string> RowsOf(const ResultTree& tree);

/// The processing window, on a desktop that records, with timers whose ticks the test gives and a clock that stands
/// until the test moves it.
class ProcessingWindowTest : public testing::Test
{
protected:
    ProcessingWindowTest();
    ~ProcessingWindowTest() override;

    /// The window, loaded and shown at the first call.
    frmProcessingDocuments& Window();

    /// The window as the main window leaves it when a run begins.
    frmProcessingDocuments& BeginRun();

    /// The same as the report of the last file leaves it.
    void EndRun();

    template <class Control = QWidget>
    Control& The(const char* name)
    {
        auto* const control = Window().findChild<Control*>(QString::fromLatin1(name));
        if (control == nullptr)
            throw std::runtime_error(std::string("no control named ") + name);
        return *control;
    }

    std::string Text(const char* name);  ///< Of a label or button.
    bool IsVisible(const char* name) { return The(name).isVisible(); }
    void Click(const char* name);
    void ShowTab(int tab);

    /// Adds a result as the main window does.
    void Add(const std::shared_ptr<CounterStatuses>& status, bool isReqCount = true);

    /// Adds a result with its hits, as the main window does.
    void AddWithHits(const std::shared_ptr<CounterStatuses>& status, const std::vector<Hit>& hits = {},
                     bool isReqCount = true);

    /// The point in the middle of a row's text; the row is scrolled to.
    static QPoint PointOf(ResultTree& tree, const QModelIndex& index);

    /// Moves the pointer to a point of a tree and double clicks there.
    static void DoubleClick(ResultTree& tree, QPoint point);

    /// One tick of every timer that runs.
    void Tick();

    const UserFolders user_;
    const ErrorLogRecorder log_;
    MessageRecorder messages_;
    ShellRecorder shell_;
    const ChosenLanguage language_{FromUtf8(TESSARINE_PROGRAM_FOLDER), u"English.lng"};
    const TemporaryFolder folder_;
    std::int32_t mFilesChanged = 0;
    std::int32_t mTotalChanges = 0;
    QTime now_{9, 30};  // by the clock
    std::map<TimerIdentifier, TimerCallback> timers_;
    std::vector<std::int32_t> intervals_;

private:
    TimerIdentifier lastTimer_ = 0;
    SystemTimerPort previousTimers_;
    TimeOfDayPort previousClock_;
};

}  // namespace tessarine
