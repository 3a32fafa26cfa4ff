#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QMainWindow>

#include "model/Event.h"
#include "platform/String.h"
#include "shell/CommonDialog.h"
#include "ui/main/ListHistory.h"
#include "ui/main/RunWatch.h"

class QCheckBox;
class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QToolBar;

namespace tessarine
{

class CounterStatuses;
class EndlessNotice;
class EntryBox;
class FileCounter;
class FindAndReplaceItems;
class FindBar;
class frmChangeLanguage;
class ItemsGrid;
class NoticeStrip;
class NumberBox;
class Project;
class RecentFiles;
struct FindAndReplaceItem;

/// The main window: edits the job of CurrentProject, which must be there before the window. Its controls hold the job
/// while the user works; FillProjectObject and LoadProjectOnForm copy between them and the project. The list of pairs
/// is the exception: the grid works on it directly.
///
/// A control's name is also its objectName, followed by "(i)" for a member of an array. A failure in a handler is
/// logged under the handler's name and ends it.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    /// Shows the job of CurrentProject as an unnamed one, whatever file it comes from.
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // The window: frmMain.cpp.

    /// Whether the job differs from its file. A write rebuilds the caption.
    bool IsModifed() const { return isModifed_; }
    void PutIsModifed(bool value);

    /// Full path of the job's file; empty for the default project. A write rebuilds the caption.
    const String& ProjectFile() const { return projectFile_; }
    void PutProjectFile(const String& value);

    /// Raised when the window has closed. A run that goes on without the window comes first: the event follows its end.
    Event<> Unloaded;

    void LoadLng();                       ///< Applies the active language.
    void Form_QueryUnload(bool& Cancel);  ///< Saves the default project, then asks about unsaved changes.

    // Form and project: FormBinding.cpp.

    void FillProjectObject();     ///< Copies the controls to the project, but for the password.
    void LoadProjectOnForm();     ///< Copies the project to the controls. The job may be marked afterwards.
    void EnableDisableControl();  ///< Enables the controls of the list by its source and whether it has rows.

    // The option controls: OptionHandlers.cpp.

    void optFileProcess_Click(int Index);      ///< 0: the files of a folder, 1: those that a text file lists.
    void optLoad_Click(int Index);             ///< 0: the pairs of a list file, 1: those of the grid.
    void cboversion_Change();                  ///< Empties the box when its text isn't a number.
    void chkProccessLongestFileFirst_Click();  ///< Marks the job, also while the form is being filled.
    void SetSearchOptions();                   ///< Puts the options shown on all selected rows.
    void pnlLoadOptions_MouseMove();           ///< The pointer has left the grid.

    // The grid of pairs: GridHandlers.cpp. Rows count from 1; row 0 is the heading.

    void LoadGrid(const FindAndReplaceItems& List);  ///< Shows all pairs of a list, with the first one current.

    /// Puts a pair (shared, not copied) into a row and shows it.
    void SetItemOnGridRow(std::int32_t Row, const std::shared_ptr<FindAndReplaceItem>& Item);

    void cmdAdd_Click();                                    ///< Appends a pair with the options shown, and edits it.
    void cmdDelete_Click();                                 ///< Removes the selected pairs when the user agrees.
    void cmdSwap_Click();                                   ///< Exchanges the two texts of the selected pairs.
    void grdItems_AfterEdit(std::int32_t Row, int Col);     ///< A typed text has changed a pair: marks the job.
    void grdItems_BeforeRowColChange(std::int32_t OldRow);  ///< A row is left; an open editor has given its text.
    void grdItems_AfterRowColChange(std::int32_t OldRow, std::int32_t NewRow);  ///< Shows the new row's options.
    bool grdItems_KeyDownEdit(const QKeyEvent& Key);  ///< A key in the cell editor: true when it is consumed.
    void grdItems_KeyDown(QKeyEvent& Key);            ///< A key outside of it, which is accepted when it is consumed.
    void grdItems_MouseMove(std::int32_t MouseRow);   ///< Underlines the row under the pointer.

    // Comforts of editing the list: ListEditing.cpp. Each is one step to undo.

    void UndoListStep();  ///< Takes the last change of the list back; the mark goes when the list is as saved.
    void RedoListStep();
    void CopyPairs();      ///< The selected pairs, for spreadsheets and for this program.
    void CutPairs();       ///< The same, and removes them without a question.
    void PastePairs();     ///< Puts the clipboard's pairs below the selected rows, or at the end, and selects them.
    void MovePairsUp();    ///< The selected rows, by one.
    void MovePairsDown();  ///< The same.
    void SelectAllPairs();

    // Looking for a text in the list: FindInList.cpp.

    void OpenFind();      ///< Shows the bar for it.
    void FindTyped();     ///< From the current row on.
    void FindNext();      ///< Behind the current row, and from the top again.
    void FindPrevious();  ///< The other way around.

    // A pair's locations and options: LocationHandlers.cpp.

    void FillItemOnForm(const FindAndReplaceItem& Item);          ///< Shows a pair's locations and options.
    std::shared_ptr<FindAndReplaceItem> GetItemFromForm() const;  ///< A new pair without texts; null after a failure.
    void EnsureOneLocation();                                     ///< Checks "Slides" when nothing is checked.
    void lstLookIn_ItemCheck();                                   ///< Puts all locations shown on all selected rows.
    void chkSelectAll_Click();                                    ///< Checks all locations, or none.

    // Project files: ProjectFileCommands.cpp.

    void mnuOpen_Click();                     ///< Loads a job; unsaved changes are lost without a question.
    void menuSave_Click();                    ///< Saves the form to the job's file, or to a new one.
    void menuSaveAs_Click();                  ///< Saves the job as it was last saved or run, without the form.
    void mnuDefRF_Click(std::int32_t Index);  ///< A recent file, by its place in the menu from 0.
    void mnuExit_Click();                     ///< Closes the window.

    // List files: ListCommands.cpp. Browsing: BrowseCommands.cpp.

    void mnuImportList_Click();             ///< Replaces the list by that of a file; a failed import changes nothing.
    void mnuExportList_Click();             ///< Writes the list to a file; one that is there is asked about.
    void cmdBrowse1_Click();                ///< The file of the list.
    void cmdBrowse2_Click();                ///< The folder of the presentations.
    void cmdBrowse3_Click();                ///< The text file that lists presentations.
    void OpenTextOf(const QLineEdit& box);  ///< The DblClick of the three boxes: opens the path in the box.

    void cmdErrorLog_Click();  ///< Of the notices (Notices.cpp): opens the error log.

    // Language, help, about: HelpCommands.cpp.

    void mnuChangeLanguage_Click();             ///< Shows the dialog and waits for its end.
    void mfrmChangeLanguage_LanguageChanged();  ///< Applies the language that was chosen.
    void mnuHelp1_Click();                      ///< Opens the help.
    void mnuHomePage_Click();                   ///< Opens the product's site in the browser; without one, the help.
    void mnuAbout_Click();                      ///< Shows the dialog and waits for its end.
    void Toolbar1_ButtonClick(int Index);       ///< 1 open, 2 save, 4 help.

    // Start of a run: Validation.cpp, RunLaunch.cpp.

    /// Tests what a run needs. At the first fault it shows a message, mostly moves the user to the control, and is
    /// false.
    bool Validation();
    void cmdStartReplacing_Click(std::int16_t Index);  ///< A StartCommand. Does nothing while a run is going.
    void UnloadPowerPoint();                           ///< Shuts a PowerPoint that runs, also one of the user's.

    // Events of a run: RunEvents.cpp.

    void mProject_BeforFileProcess(const String& vFilepath);  ///< A file is about to be processed.

    /// A file has its result, which may be null or that of the file before. The only handler that raises: what fails
    /// when the result is shown ends the run.
    void mProject_AfterFileProcess(const std::shared_ptr<CounterStatuses>& vStatus);

    void mProject_ManualInterventionRequired();  ///< Shows frmIntervention and waits for its end.
    void mProject_ProcessCancel();               ///< The run has seen the cancel.

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;  ///< Takes files, unless a run is going.
    void dropEvent(QDropEvent* event) override;

private:
    /// The unit of the handlers in the lines of the error log.
    static constexpr StringView place = u"Form frmMain";

    // Building of the controls: MainMenu.cpp, ReplacementTab.cpp, FilesTab.cpp, OptionsTab.cpp, MainLayout.cpp.
    void BuildMenu();
    void BuildToolbar();
    void BuildTabs();
    QWidget* BuildReplacementTab();
    QWidget* BuildListSource();
    QWidget* BuildItemOptions();
    QWidget* BuildFilesTab();
    QWidget* BuildOptionsTab();
    QWidget* BuildTreatment();
    QWidget* BuildVersionControl();
    QWidget* BuildPowerPointControl();
    void BuildStartButtons();
    void SetTabOrder();
    void ConnectHandlers();
    void ConnectGrid();
    void BuildGridMenu();   // GridMenu.cpp
    void EnableGridMenu();  // for the time that it is open
    void NameGridMenu();
    void NameControlsWithoutCaption();

    void Form_Load();
    void BuildTitle();
    void Mark();        // modified, unless the form is being filled
    void MarkAlways();  // modified, also while the form is being filled
    void OpenProject(const String& path);
    bool ImportFrom(const String& path);  // false after a message that it was refused
    void AsOneStep(const std::vector<std::int32_t>& rows, const std::function<void()>& change);  // ListHistory::Do
    void MarkListChange();    // modified, by something that can be undone
    void MarkAsListStands();  // after an undo
    bool CanEditList() const;
    void ShowList(const std::vector<std::int32_t>& rows);
    static bool HasPairsToPaste();
    OptionSetting SettingOfNewPairs();
    void MovePairs(bool isUp);
    void FindInList(std::int32_t from, bool isForwards);
    QString TextNamingChoice(const String& key) const;  // ListNotice.cpp
    void TellListUse();
    void AddRow();
    void TakePairFromList(std::int32_t row);
    void KeepTypedText(std::int32_t row, int column, const QString& before);
    void TakeLocations(std::int32_t row);
    void AskAndSave(bool& Cancel);

    // What became of a step, for the strip of notices: Notices.cpp. Each tells of a failure, or that one is over.
    void NoteStart();                   // the default project was loaded before the window
    void NoteSave(const String& path);  // a failure marks the job again
    void NoteDefaultProject();          // it was saved
    void NoteLoad(const String& path, bool isLoaded);
    void NoteImport(const FindAndReplaceItems& list, const String& path, bool isAccepted);
    void NoteExport(const FindAndReplaceItems& list, const String& path);
    void NoteFileSet();  // the files of the job were counted
    void NoteFileList(const String& path);
    bool HasSaved(const String& path) const;

    // Files and folders that are dropped: DropCommands.cpp.
    void Take(const std::vector<String>& paths, const QWidget* under);
    void TakeFolder(const String& path);
    void TakePresentations(const std::vector<String>& paths);
    void TakeFileList(const String& path);
    void TakePairList(const String& path, const QWidget* under);
    void TakeProject(const String& path);

    // The count on the tab of the files: FileCounting.cpp.
    void ConnectFileCount();
    void CountFiles();  // those that are chosen by now, while the tab is in front
    void WordFileCount();

    bool ValidateList();
    bool ValidateFiles();

    /// The list for a run: null stands for the project's own. Nothing comes back after a message that there is none.
    std::optional<std::shared_ptr<FindAndReplaceItems>> ListOfRun();
    void Run(std::int16_t Index, const std::shared_ptr<FindAndReplaceItems>& list);
    void ReceiveEvents();  // of mProject

    QToolBar* Toolbar1 = nullptr;
    QLabel* lblEngine = nullptr;  // in the status bar
    NoticeStrip* fraNotice = nullptr;
    QTabWidget* SSTab1 = nullptr;
    EndlessNotice* lblEndless = nullptr;              // above the start buttons
    std::array<QPushButton*, 2> cmdStartReplacing{};  // by StartCommand

    // On the first tab.
    std::array<QRadioButton*, 2> optLoad{};
    QWidget* picBrowse1 = nullptr;
    EntryBox* txtLoadsearch = nullptr;
    QPushButton* cmdBrowse1 = nullptr;
    ItemsGrid* grdItems = nullptr;
    QPushButton* cmdAdd = nullptr;
    QPushButton* cmdDelete = nullptr;
    QPushButton* cmdSwap = nullptr;
    QListWidget* lstLookIn = nullptr;
    QCheckBox* chkSelectAll = nullptr;
    QCheckBox* chkMatchCase = nullptr;
    QCheckBox* chkMatchWholeWord = nullptr;
    QCheckBox* chkHAlfFulll = nullptr;  // without effect: no field is bound to it
    QCheckBox* chkPromptOnReplace = nullptr;

    // On the second tab.
    std::array<QRadioButton*, 2> optFileProcess{};
    QWidget* picBrowse2 = nullptr;
    EntryBox* txtStartFolder = nullptr;
    QPushButton* cmdBrowse2 = nullptr;
    QCheckBox* chkIncludesubfolders = nullptr;
    QComboBox* cboSpreadsheetType = nullptr;
    QWidget* picBrowse3 = nullptr;
    EntryBox* txtGetFileName = nullptr;
    QPushButton* cmdBrowse3 = nullptr;
    QLabel* lblFileCount = nullptr;

    // On the third tab.
    QCheckBox* chkBackupMode = nullptr;
    QCheckBox* chkKeepOiginal = nullptr;
    QCheckBox* chkReadOnlyFile = nullptr;
    QCheckBox* chkAllowAlert = nullptr;
    QCheckBox* chkRequireCount = nullptr;
    QCheckBox* chkCPUUsage = nullptr;
    QCheckBox* chkProccessLongestFileFirst = nullptr;
    EntryBox* txtPasswordOpen = nullptr;
    EntryBox* txtRevisonProperty = nullptr;
    QComboBox* cboversion = nullptr;
    NumberBox* lstRestartFileCount = nullptr;
    NumberBox* lstRestartAfterSecond = nullptr;

    QMenu* mnuPairs = nullptr;  // of the grid
    FindBar* findBar_ = nullptr;
    QLabel* lblPairsNotice = nullptr;  // above the grid

    bool isModifed_ = false;
    bool isMarkedBesidesList_ = false;  // by something that the history of the list can't undo
    ListHistory listHistory_;
    bool wasImportedUnused_ = false;  // the list, while a run takes another one; until that is chosen anew
    String projectFile_;

    /// True while LoadProjectOnForm or FillItemOnForm writes to the controls, so that their handlers stay quiet. Not
    /// scoped: FillItemOnForm ends it for a LoadProjectOnForm around it, and a failure in there leaves it on.
    bool IsFillingItem = false;

    std::int32_t LastHoverRow = 0;  // 0 for none
    bool isClosed_ = false;         // by the user, maybe during a run
    RunWatch runWatch_;
    CommonDialog common;  // of all file commands: what one does not set is as the last one left it
    std::shared_ptr<Project> mProject;
    std::unique_ptr<frmChangeLanguage> mfrmChangeLanguage;  // while it is shown
    std::unique_ptr<RecentFiles> recentFiles_;
    FileCounter* fileCounter_ = nullptr;
    std::function<QString()> wordFileCount_;  // what lblFileCount tells, in the language in force; may be empty
};

/// The text of a key of section "Global Msg", in the active language.
String GlobalMsg(const String& key);
String GlobalMsg(const String& key, std::int32_t number);  ///< With the number in place of every "%d".

}  // namespace tessarine
