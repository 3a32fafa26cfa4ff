// The English texts that the windows are built with, letter by letter. Odd spellings are part of that wording.
#include <gtest/gtest.h>

#include "app/ChosenLanguage.h"
#include "app/LanguageText.h"

namespace tessarine
{

namespace
{

struct Wording {
    const char* section;
    const char* key;
    const char* text;
};

constexpr const char* chooseFolder =
    "Choose the folder to start searching for files in. Double click the folder to open in Explorer";
constexpr const char* noEffect = "A run does not use this.";
constexpr const char* wholeWords = "Searches for occurrences that are whole words and not part of a larger word.";

constexpr Wording wordings[] = {
    {"frmMain", "SSTab1.TabCaption(0)", "Replacement"},
    {"frmMain", "SSTab1.TabCaption(1)", "File to process"},
    {"frmMain", "SSTab1.TabCaption(2)", "Options"},
    {"frmMain", "cmdStartReplacing(0).caption", "Starting replacing"},
    {"frmMain", "cmdStartReplacing(0).ToolTipText", "Start Processing"},
    {"frmMain", "cmdStartReplacing(1).caption", "Start Searching"},
    {"frmMain", "cmdStartReplacing(1).ToolTipText", "Start Processing"},
    {"frmMain", "cmdAdd.caption", "&Add"},
    {"frmMain", "cmdDelete.caption", "&Delete"},
    {"frmMain", "cmdSwap.caption", "Swap Values"},
    {"frmMain", "cmdBrowse1.ToolTipText", "Select the filename to use"},
    {"frmMain", "cmdBrowse2.ToolTipText", chooseFolder},
    {"frmMain", "txtStartFolder.ToolTipText", chooseFolder},
    {"frmMain", "optLoad(0).caption", "Load a search/replace list from this file (Excel .XLS, .CSV or .TAB)"},
    {"frmMain", "optLoad(1).caption", "Using these values"},
    {"frmMain", "optFileProcess(0).caption", "Scan for files"},
    {"frmMain", "optFileProcess(1).caption", "Get filenames from a text file :"},
    {"frmMain", "chkIncludesubfolders.caption", "&Include subfolders"},
    {"frmMain", "chkIncludesubfolders.ToolTipText", "Search for documents in subfolders of the starting folder"},
    {"frmMain", "chkSelectAll.caption", "Select/De-Select Search Locations"},
    {"frmMain", "chkMatchCase.caption", "&Match Case"},
    {"frmMain", "chkMatchWholeWord.caption", "Match Whole Word"},
    {"frmMain", "chkMatchWholeWord.ToolTipText", wholeWords},
    {"frmMain", "chkHAlfFulll.caption", "Match Half/Full Width of Form"},
    {"frmMain", "chkHAlfFulll.ToolTipText",
     "Searches for occurrences that are whole words and not part of a larger word. A run does not use this."},
    {"frmMain", "chkPromptOnReplace.ToolTipText", noEffect},
    {"frmMain", "chkProccessLongestFileFirst.ToolTipText", noEffect},
    {"frmMain", "txtPasswordOpen.ToolTipText", noEffect},
    {"frmMain", "lstRestartAfterSecond.ToolTipText", noEffect},
    {"frmMain", "chkPromptOnReplace.caption", "Prompt on Replace "},
    {"frmMain", "chkCPUUsage.caption", "Force to Control CPU Usage"},
    {"frmMain", "chkRequireCount.caption", "Required Find And Replace Count"},
    {"frmMain", "chkReadOnlyFile.caption", "Process read only File "},
    {"frmMain", "chkAllowAlert.caption", "Allow Alerts"},
    {"frmMain", "chkProccessLongestFileFirst.caption", "Process longest 'Find What' string first"},
    {"frmMain", "chkBackupMode.caption", "BackUp Mode"},
    {"frmMain", "chkKeepOiginal.caption", "Keep the original file date"},
    {"frmMain", "lblStartfolder.caption", "Start folder"},
    {"frmMain", "lblSpreadsheettypes.caption", "File Type"},
    {"frmMain", "lblSearchLocation.caption", "Search Location"},
    {"frmMain", "lblISOVersion.caption", "ISO 9001 Version Conrtol "},
    {"frmMain", "lblRevison.caption", "'Revision' Document  Property Name"},
    {"frmMain", "lblRevisionBy.caption", "By"},
    {"frmMain", "lblPasswordOpen.caption", "Password For Open"},
    {"frmMain", "lblRestartFileCount.caption", "Restart Microsoft Excel after this many document(0 for never)"},
    {"frmMain", "lblRestartAfterSecond.caption",
     "Restart Microsoft Excel atomatically if unresponsive for this many second(0 for never)"},
    {"frmMain", "fraExcelControl.Caption", "Microsoftt  Excel Control"},
    {"frmMain", "mnuFile.caption", "&File"},
    {"frmMain", "mnuOpen.caption", "&Open"},
    {"frmMain", "menuSave.caption", "&Save"},
    {"frmMain", "menuSaveAs.caption", "Save&As"},
    {"frmMain", "mnuRecent.caption", "&Recent Files"},
    {"frmMain", "mnuExit.caption", "&Exit"},
    {"frmMain", "menuOption.caption", "&Option"},
    {"frmMain", "mnuChangeLanguage.caption", "&Change Language..."},
    {"frmMain", "mnuStartSearching.caption", "Start &Searching"},
    {"frmMain", "mnuStartReplacing.caption", "Start &Replacing"},
    {"frmMain", "mnuImportList.caption", "&Import search/replace list"},
    {"frmMain", "mnuExportList.caption", "&Export search/replace list"},
    {"frmMain", "mnuHelp.caption", "&Help"},
    {"frmMain", "mnuHelp1.caption", "&Help"},
    {"frmMain", "mnuHomePage.caption", "&Visit Our Website"},
    {"frmMain", "mnuAbout.caption", "&About"},
    {"frmProcessingDocuments", "cmdOK.caption", "OK"},
    {"frmProcessingDocuments", "cmdCopyLog.caption", "Copy log to clipboard"},
    {"frmProcessingDocuments", "cmdCommand(0).caption", "Remove Backup Files"},
    {"frmProcessingDocuments", "cmdCommand(1).caption", "Restore Backup Files"},
    {"frmProcessingDocuments", "SSTab1.TabCaption(0)", "&1 Progress"},
    {"frmProcessingDocuments", "SSTab1.TabCaption(1)", "&2 Files changes"},
    {"frmProcessingDocuments", "SSTab1.TabCaption(2)", "&3 Files not changes"},
    {"frmProcessingDocuments", "SSTab1.TabCaption(3)", "&4 Error"},
    {"frmChangeLanguage", "lblLanguage.caption", "&Language"},
    {"frmChangeLanguage", "cmdOK.caption", "OK"},
    {"frmChangeLanguage", "cmdCancel.caption", "Cancel"},
};

}  // namespace

TEST(EnglishText, IsTheWordingOfTheWindows)
{
    const ChosenLanguage language(FromUtf8(TESSARINE_PROGRAM_FOLDER), u"English.lng");

    for (const Wording& wording : wordings)
        EXPECT_EQ(ToUtf8(GetLngString(FromUtf8(wording.section), FromUtf8(wording.key))), wording.text) << wording.key;
}

}  // namespace tessarine
