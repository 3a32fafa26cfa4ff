#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include <QTime>
#include <QTimer>
#include <QWidget>

#include "engine/CounterStatuses.h"
#include "platform/Failure.h"
#include "report/RunReport.h"
#include "run/MadeBackups.h"
#include "run/TimerX.h"
#include "ui/run/HitStore.h"
#include "ui/run/RunTexts.h"

class QFrame;
class QLabel;
class QPushButton;
class QSplitter;
class QTabWidget;

namespace tessarine
{

class FileMenu;
class FailureList;
class FileProgressBar;
class FilterBar;
class HitsPane;
class ResultTotals;
class ResultTree;
struct ResultNode;

/// The window of a run: its progress, the files that changed, those that did not, and the errors. The main window
/// opens it and fills it; it stays open after the run, until the user closes it.
///
///   IsComplited  caption of cmdOK    cmdOK
///   false        CANCELcaption       ask the run to end before its next file; the window stays
///   true         OKcaption           close the window
///
/// After the run a line says in words how it has ended, in the place of the one that asks to leave PowerPoint alone. A
/// run that a failure has ended leaves IsComplited false; cmdClose then stands beside cmdOK.
///
/// All failures of a run stand in one list, above the tree of the errors. Beside the trees, a pane shows the hits of
/// the node that is current in the tree in front; above each of them stands a box that filters its files. One filter
/// holds for the three trees.
///
/// The window's own close button does the same while a run is going, and closes the window otherwise, also after a run
/// that ended early with IsComplited false.
///
/// There is one at a time. It is loaded by its first use and forgotten when it closes: what closes comes back empty.
/// Everything happens on the thread of the windows: a click reaches this window in the middle of a run, where the run
/// delivers events.
///
/// A failure in a handler is logged under the handler's name and ends it.
class frmProcessingDocuments : public QWidget
{
    Q_OBJECT

public:
    /// The window, loaded if it is not. `owner` is the window that it stays in front of, for one that is loaded now.
    static frmProcessingDocuments& Instance(QWidget* owner = nullptr);

    /// The window if it is loaded, otherwise null: the user may close it before the run is quite over.
    static frmProcessingDocuments* Loaded();

    ~frmProcessingDocuments() override;

    bool IsComplited = false;                 ///< Whether the run has reported its end.
    bool IsRunGoing = false;                  ///< Whether the run is in progress, whatever became of its last file.
    std::unique_ptr<TimerX> tmrelapsedSecsX;  ///< Refreshes the elapsed time until it is disabled.
    QTime StartTime;                          ///< The time of day at which the run began, or the window was loaded.

    // What a run shows.

    /// A run begins: the elapsed time starts anew, and what told of the run before goes away, but for its results. A
    /// line says so when there are any.
    void ShowBeginning();

    /// The run is over, in words.
    void ShowEnd(const String& outcome);

    /// The run has come to another file, and then to another pair in it.
    void ShowFileBegins();
    void TellPair(std::int32_t number, const String& findWhat);

    void SetProgressRange(std::int32_t maximum);  ///< So many files, of which none is done.
    void AddProgressStep();                       ///< One more file is done.
    void FillProgress();                          ///< The run is over.
    void StopProgressAt(std::int32_t files);      ///< It has ended after so many files, and is seen to.
    void ShowProgressTab();                       ///< Where every run begins.
    void SetDocChanged(const String& text);       ///< The line with the file that the run is at.
    void SetChangesMade(const String& text);      ///< The running total.
    void SetOKCaption(const String& text);        ///< The caption of cmdOK; see the table above.

    /// The tree for a result. Null for a status that has none. Raises `ObjectNotSet` when there is no result.
    ResultTree* TreeOf(const std::shared_ptr<CounterStatuses>& vStatus) const;

    /// Counts a file that could not be opened, once, in a line that appears with the first of them, logs the file and
    /// the reason, lists it, and reports it to the hits as failed.
    void FileNotOpened(const String& path, const Failure& failure);

    /// The same for a file that was opened, and then could not be searched, changed or saved.
    void FileNotProcessed(const String& path, const Failure& failure);

    /// Lists a failure that is told elsewhere, too; one of the whole run when `path` is empty.
    void ListFailure(const String& path, const String& reason);

    /// Tells in a line that a failure has ended the run before its last file; the progress stays where it was.
    void TellRunFailed();

    /// Takes the lines and the list away, for another run.
    void ForgetFailures();

    int FailureCount() const;  ///< Those listed.

    /// What the runs told of their files, for as long as the window is loaded.
    HitStore& Hits() { return hits_; }

    /// The backups that the runs have made, for as long as the window is loaded.
    MadeBackups& Backups() { return backups_; }

    /// A run begins, whose report can be saved when it is over.
    void BeginReport(const RunFacts& facts);

    /// The run is over: cmdSaveReport can be used.
    void EndReport(const RunEnd& end);
    const RunFacts& FactsOfReport() const { return runFacts_; }

    /// The trees of the results.
    ResultTree* const trvChangedFiles;
    ResultTree* const trvNotChangedFiles;
    ResultTree* const trvErrors;

    // Handlers.

    void LoadLng();       ///< Applies the active language, in the words of the kind of run that IsSearchRun tells.
    void UpdateSecs();    ///< Shows the elapsed time and delivers events.
    void SSTab1_Click();  ///< Shows the panel of the tab in front, and hides the others.
    void cmdOK_Click();   ///< Acts by IsComplited; see the table above.

    void cmdGiveUp_Click();      ///< Gives the file up that the run is at: its next call for it fails.
    void cmdFailures_Click();    ///< Brings the list of failures to the front.
    void cmdSaveReport_Click();  ///< Saves the results in a file that the user chooses: SaveReport.cpp.

    // Handlers on the results: ResultCommands.cpp.

    void cmdCopyLog_Click();                    ///< Puts the log of the two trees of files on the clipboard.
    void cmdCommand_Click(int index);           ///< 0 removes the backups, 1 restores them.
    void cmdErrorLog_Click();                   ///< Opens the error log.
    void OPenDocument(const ResultNode& node);  ///< Opens a file's node; does nothing for another.
    void lstHits_DblClick(const String& path);  ///< Opens the file of a hit.

    // What the context menus of the trees offer for the file of the current node: FileCommands.cpp. Of a pair or a
    // location it is the file that it belongs to.

    void mnuOpenFile_Click();
    void mnuOpenFolder_Click();  ///< Opens the folder that the file is in.
    void mnuCopyPath_Click();    ///< Puts the file's full path on the clipboard.

    /// These four ask first, say afterwards what became of it, and log each file that failed. Unlike those of
    /// cmdCommand_Click they find every backup that a run of this window has made, whatever its name is.
    void mnuRestoreFile_Click();
    void mnuRemoveBackup_Click();
    void mnuRestoreAll_Click();  ///< Of all files, whatever the filter shows.
    void mnuRemoveAllBackups_Click();
    // Handlers on the list of failures: ResultCommands.cpp.

    void lstFailures_DblClick(const String& path);    ///< Opens a file of the list.
    void lstFailures_OpenFolder(const String& path);  ///< Opens the folder of a file of the list.
    void lstFailures_FileChosen(const String& path);  ///< Makes the file's node the current one, where it has one.

    /// Each opens the node under the pointer, which the tree's own MouseMove has told.
    void trvChangedFiles_DblClick();
    void trvNotChangedFiles_DblClick();
    void trvErrors_DblClick();
    void trvChangedFiles_MouseMove(int Button, int Shift, float X, float Y);
    void trvNotChangedFiles_MouseMove(int Button, int Shift, float X, float Y);
    void trvErrors_MouseMove(int Button, int Shift, float X, float Y);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;  ///< Esc and Enter close the window after a run.

private:
    /// The unit of the handlers in the lines of the error log.
    static constexpr StringView place = u"Form frmProcessingDocuments";

    explicit frmProcessingDocuments(QWidget* owner);

    void Form_Load();
    void Unload();  // what closing and OK do once the run is over
    void tmrelapsedSecsX_Timer();
    void ShowElapsedTime();  // from StartTime to now
    void ShowTimeOfFile();   // and the way out, when the file takes long
    void ShowFailures();     // the lines about them, or none
    void ShowErrorTree();
    void TakeFailure(const String& path, const Failure& failure, std::set<String>& files);
    void NameControlsWithoutCaption();
    void RestoreSize();     // and the place
    void KeepSize() const;  // for the next window of its kind
    void ShowTimeLeft(int secondsGone);
    void OpenNodeUnderPointer(const ResultTree& tree);  // by the last move of the pointer
    void Open(const String& path);                      // with a message when it can't be opened
    void SaveReport(const String& path) const;

    // FileCommands.cpp
    void BuildFileMenu();
    String CurrentFile() const;  // of the tree in front; empty without one
    void ShowFileMenu();         // it is about to be shown
    enum class BackupTreatment { Restore, Remove };
    void TreatBackups(BackupTreatment treatment, std::vector<String> paths);

    // What is seen of the results: ResultDisplay.cpp.
    std::array<ResultTree*, 3> Trees() const { return {trvChangedFiles, trvNotChangedFiles, trvErrors}; }
    ResultTree* TreeInFront() const;           // null when the progress is in front
    void TakeFilterText(const QString& text);  // typed above one of the trees
    void ApplyFilter();
    void FocusFilter();
    void ShowHits();                          // of the current node of the tree in front
    void ShowHitsOf(const ResultTree& tree);  // which has a current node
    void ShowTotals();                        // soon, and not too often
    void ShowTotalsNow();
    QString HitTotals(const ResultTotals& totals) const;  // pairs and hits in words

    // Building of the controls: ProcessingLayout.cpp.
    void BuildControls();
    void BuildWarning();
    void BuildHits();
    QWidget* BuildProgress();
    QWidget* BuildFailures();
    QWidget* BuildErrors();
    QWidget* BuildStuck();
    void BuildOutcome();
    QWidget* BuildChangedFiles();
    QWidget* BuildTree(const char* panelName, ResultTree* tree, int number);
    void BuildCounts();
    void BuildCommands();
    void SetTabOrder();
    void ConnectHandlers();

    QTabWidget* SSTab1 = nullptr;
    std::array<QWidget*, 4> panels{};  // of the tabs
    FileProgressBar* pgbar1 = nullptr;
    QLabel* lblelapsedSecs = nullptr;
    QLabel* lblRemaining = nullptr;      // the time that is left, once it can be guessed
    QLabel* lblDocChanged = nullptr;     // the file that the run is at, and the outcome after it
    QLabel* lblChangesMade = nullptr;    // the running total
    QLabel* lblStopping = nullptr;       // shown after a cancel until the run is over
    QWidget* panelStuck = nullptr;       // shown when a file takes long
    QLabel* lblStuck = nullptr;          // for how long, and at which pair
    QPushButton* cmdGiveUp = nullptr;    // beside it
    QLabel* lblAdded = nullptr;          // shown when there are results of runs before
    QLabel* lblFailures = nullptr;       // how many there are in the list
    QLabel* lblNotOpened = nullptr;      // how many files could not be opened
    QLabel* lblNotProcessed = nullptr;   // how many were opened, and failed then
    QLabel* lblRunFailed = nullptr;      // shown when a failure has ended the run
    QPushButton* cmdFailures = nullptr;  // beside the lines about failures
    QPushButton* cmdErrorLog = nullptr;  // the same
    QWidget* panelFailures = nullptr;
    QSplitter* splErrors = nullptr;  // the list of failures above the tree
    FailureList* lstFailures = nullptr;
    QFrame* panelWarning = nullptr;
    QLabel* imgWarning = nullptr;
    QLabel* lblWarning = nullptr;
    QFrame* panelOutcome = nullptr;  // takes the place of the warning after the run
    QLabel* lblOutcome = nullptr;
    QWidget* panelCommand = nullptr;
    QSplitter* splHits = nullptr;         // the tabs above the hits
    HitsPane* panelHits = nullptr;        // hidden while the progress is in front
    std::array<FilterBar*, 3> filters{};  // above the trees
    std::array<QLabel*, 3> lblCount{};    // beside the names of the trees' tabs: how many files
    QLabel* lblTotals = nullptr;          // of all files
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdClose = nullptr;  // after a run that has left cmdOK to its cancel
    QPushButton* cmdCopyLog = nullptr;
    QPushButton* cmdSaveReport = nullptr;
    std::array<QPushButton*, 2> cmdCommand{};  // removes the backups, restores them

    FileMenu* fileMenu_ = nullptr;
    HitStore hits_;
    MadeBackups backups_;
    RunTexts texts_;
    QTimer filterTimer_;  // runs while the filter waits for more letters
    QTimer totalsTimer_;  // runs while new totals would come too soon after the last that were shown
    bool areTotalsOld_ = false;
    RunFacts runFacts_;  // of the run begun last
    RunEnd runEnd_;
    std::set<String> notOpened_;     // paths
    std::set<String> notProcessed_;  // the same
    bool hasRunFailed_ = false;      // before its last file
    QTime fileBegan_;                // by the clock
    int secondsOfFile_ = 0;          // shown last
    std::int32_t pairNumber_ = 0;    // that the run is at; 0 before the first of a file
    String pairText_;
    float lastX_ = 0;  // of the pointer over a tree
    float lastY_ = 0;
};

}  // namespace tessarine
