#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include <QMainWindow>
#include <QPointer>

#include "model/Event.h"
#include "model/FindAndReplaceItems.h"
#include "model/Project.h"
#include "platform/Failure.h"
#include "run/OwnResults.h"
#include "shell/CommonDialog.h"

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

class frmChangeLanguage;
class Frame;
class ItemsGrid;
class NumberBox;
class RecentFiles;
class EntryBox;

/// The main window: edits the job of CurrentProject, which must be there before the window. Its controls hold the job
/// while the user works; FillProjectObject and LoadProjectOnForm copy between them and the project. The list of pairs
/// is the exception: the grid works on it directly.
///
/// A control's name is also its objectName, "(i)" behind it for a member of an array. A failure in a handler is logged
/// under the handler's name and ends it.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // --- The window (frmMain.cpp) -------------------------------------------------------------------------------

    /// Whether the job differs from its file, and the full path of that file; empty for the default project. Writing
    /// either rebuilds the caption.
    bool IsModifed() const { return isModifed_; }
    void PutIsModifed(bool value);
    const String& ProjectFile() const { return projectFile_; }
    void PutProjectFile(const String& value);

    /// Raised when the window has closed; behind the end of a run that is going on without it.
    Event<> Unloaded;

    void LoadLng();                       ///< Applies the active language.
    void Form_QueryUnload(bool& Cancel);  ///< Saves the default project, then asks about unsaved changes.

    // --- Form and project (FormBinding.cpp) ---------------------------------------------------------------------

    void FillProjectObject();
    void LoadProjectOnForm();
    void EnableDisableControl();

    // --- Option controls (OptionHandlers.cpp) -------------------------------------------------------------------

    void optFileProcess_Click(int Index);
    void optLoad_Click(int Index);
    void cboversion_Change();
    void chkProccessLongestFileFirst_Click();
    void SetSearchOptions();
    void pnlLoadOptions_MouseMove();

    // --- Grid of pairs (GridHandlers.cpp) -----------------------------------------------------------------------

    void LoadGrid(const FindAndReplaceItems& List);
    void SetItemOnGridRow(std::int32_t Row, const std::shared_ptr<FindAndReplaceItem>& Item);
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdSwap_Click();
    void grdItems_AfterEdit(std::int32_t Row, int Col);
    void grdItems_BeforeRowColChange(std::int32_t OldRow);
    void grdItems_AfterRowColChange(std::int32_t OldRow, std::int32_t NewRow);
    bool grdItems_KeyDownEdit(const QKeyEvent& Key);  ///< True when the key is consumed.
    void grdItems_KeyDown(QKeyEvent& Key);
    void grdItems_MouseMove(std::int32_t MouseRow);

    // --- A pair's locations and options (LocationHandlers.cpp) --------------------------------------------------

    void FillItemOnForm(const FindAndReplaceItem& Item);
    std::shared_ptr<FindAndReplaceItem> GetItemFromForm() const;
    void EnsureOneLocation();
    void lstLookIn_ItemCheck();
    void chkSelectAll_Click();

    // --- Project files (ProjectFileCommands.cpp) ----------------------------------------------------------------

    void mnuOpen_Click();
    void menuSave_Click();
    void menuSaveAs_Click();
    void mnuDefRF_Click(std::int32_t Index);
    void mnuExit_Click();

    // --- List files and browsing (ListCommands.cpp, BrowseCommands.cpp) -----------------------------------------

    void mnuImportList_Click();
    void mnuExportList_Click();
    void cmdBrowse1_Click();
    void cmdBrowse2_Click();
    void cmdBrowse3_Click();
    void OpenTextOf(const QLineEdit& box);  ///< The three ..._DblClick handlers.

    // --- Language, help, about (HelpCommands.cpp) ---------------------------------------------------------------

    void mnuChangeLanguage_Click();
    void mfrmChangeLanguage_LanguageChanged();
    void mnuHelp1_Click();
    void mnuHomePage_Click();
    void mnuAbout_Click();
    void Toolbar1_ButtonClick(int Index);

    // --- Validation and run (Validation.cpp, RunLaunch.cpp) -----------------------------------------------------

    static constexpr std::int16_t replacing = 0;  ///< Indexes of the start commands.
    static constexpr std::int16_t searching = 1;

    bool Validation();
    void cmdStartReplacing_Click(std::int16_t Index);  ///< Does nothing while a run is going.
    void UnloadPowerPoint();                           ///< The project's.

    // --- Events of a run (RunReport.cpp) ------------------------------------------------------------------------

    void mProject_BeforFileProcess(const String& vFilepath);
    void mProject_AfterFileProcess(const std::shared_ptr<CounterStatuses>& vStatus);
    void mProject_ManualInterventionRequired();
    void mProject_ProcessCancel();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Building of the controls: MainMenu.cpp, ReplacementTab.cpp, FilesTab.cpp, OptionsTab.cpp.
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
    void NameControlsWithoutCaption();

    void Form_Load();
    void BuildTitle();
    void Mark();        ///< Modified, unless the form is being filled.
    void MarkAlways();  ///< Modified, also while the form is being filled.
    void WriteBack(std::int32_t row);
    void TakeLocations(std::int32_t row);
    void AfterListChange();
    void SaveUnderChosenName();
    void OpenRecentFile(const String& path);
    void AskAndSave(bool& Cancel);

    bool ValidateList();
    bool ValidateFiles();
    void PrepareProcessingWindow();
    void Run();
    void ReceiveEvents();
    String ChangesMadeKey() const;
    void TellOfHiddenFailure();

    // --- Controls -----------------------------------------------------------------------------------------------

    QMenu* mnuRecent = nullptr;
    QToolBar* Toolbar1 = nullptr;
    QTabWidget* SSTab1 = nullptr;

    Frame* fraReplacement = nullptr;
    std::array<QRadioButton*, 2> optLoad{};
    QWidget* picBrowse1 = nullptr;
    EntryBox* txtLoadsearch = nullptr;
    QPushButton* cmdBrowse1 = nullptr;
    QWidget* pnlLoadOptions = nullptr;
    ItemsGrid* grdItems = nullptr;
    QPushButton* cmdAdd = nullptr;
    QPushButton* cmdDelete = nullptr;
    QPushButton* cmdSwap = nullptr;
    QLabel* lblSearchLocation = nullptr;
    QListWidget* lstLookIn = nullptr;
    QCheckBox* chkSelectAll = nullptr;
    QCheckBox* chkMatchCase = nullptr;
    QCheckBox* chkMatchWholeWord = nullptr;
    QCheckBox* chkHAlfFulll = nullptr;  // Without effect: no field is bound to it.
    QCheckBox* chkPromptOnReplace = nullptr;

    Frame* fraFileProcess = nullptr;
    std::array<QRadioButton*, 2> optFileProcess{};
    QWidget* picBrowse2 = nullptr;
    QLabel* lblStartfolder = nullptr;
    EntryBox* txtStartFolder = nullptr;
    QPushButton* cmdBrowse2 = nullptr;
    QCheckBox* chkIncludesubfolders = nullptr;
    QLabel* lblSpreadsheettypes = nullptr;
    QComboBox* cboSpreadsheetType = nullptr;
    QWidget* picBrowse3 = nullptr;
    EntryBox* txtGetFileName = nullptr;
    QPushButton* cmdBrowse3 = nullptr;

    Frame* frmOptions = nullptr;
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

    std::array<QPushButton*, 2> cmdStartReplacing{};

    // --- State --------------------------------------------------------------------------------------------------

    bool isModifed_ = false;
    String projectFile_;

    /// True while LoadProjectOnForm or FillItemOnForm writes to the controls, so that their handlers stay quiet. Not
    /// scoped: FillItemOnForm ends it for a LoadProjectOnForm around it, and a failure in there leaves it on.
    bool IsFillingItem = false;

    std::int32_t LastHoverRow = 0;
    bool isRunGoing_ = false;
    bool isClosed_ = false;  // by the user, maybe during a run
    std::int16_t mRunIndex = 0;
    std::int32_t mTotalFiles = 0;        // as chosen for the run
    std::int32_t mFilesProcessed = 0;    // begun
    std::int32_t mFilesChanged = 0;      // file nodes added for a file with a count
    std::int32_t mTotalChanges = 0;      // sum of all location counts
    String currentFile_;                 // of the run; empty before its first file
    std::optional<Failure> passedOver_;  // for the current file
    OwnResults results_;
    CommonDialog common;
    std::shared_ptr<Project> mProject;
    std::unique_ptr<frmChangeLanguage> mfrmChangeLanguage;
    std::unique_ptr<RecentFiles> recentFiles_;
};

/// The text of a key of section "Global Msg".
String GlobalMsg(const String& key);

}  // namespace tessarine
