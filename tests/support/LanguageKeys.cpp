#include "support/LanguageKeys.h"

#include <algorithm>

namespace tessarine::test
{

namespace
{

using Names = std::vector<std::string>;

/// The keys of one section, gathered by the class of control that they belong to.
class Section
{
public:
    explicit Section(std::string name) : name_(std::move(name)) {}

    void Key(const std::string& key, LanguageEntry entry = LanguageEntry::Words, const std::string& placeholders = {})
    {
        keys_.push_back({name_, key, entry, placeholders});
    }

    /// Labels, buttons, option buttons and check boxes: a caption and a tip.
    void Captioned(const Names& controls, LanguageEntry caption = LanguageEntry::Words)
    {
        for (const std::string& control : controls) {
            Key(control + ".caption", caption);
            Tip(control);
        }
    }

    void Tip(const std::string& control) { Key(control + ".ToolTipText", LanguageEntry::WordsOrNone); }

    const std::vector<LanguageKey>& Keys() const { return keys_; }

private:
    std::string name_;
    std::vector<LanguageKey> keys_;
};

Section Messages()
{
    Section section("Global Msg");
    for (const char* key :
         {"1001", "1002", "1003", "1008", "1016", "1028", "1029", "1037", "1039", "1043", "1044", "1045", "1046",
          "1047", "1048", "1049", "1050", "1051", "1052", "1054", "1055", "1056", "1060", "1061", "1062"})
        section.Key(key);
    section.Key("1053", LanguageEntry::Words, "s");
    for (const char* key : {"1057", "1058", "1059", "Question.Searching", "Question.Replacing",
                            "Question.ReadOnlyLeftOut", "Question.ReadOnlyTaken"})
        section.Key(key, LanguageEntry::Words, "d");
    section.Key("List.LineFeeds");
    for (const char* key : {"Question.Go", "Question.Backups", "Question.NoBackups"})
        section.Key(key);
    for (const char* key : {"Question.Folder", "Question.Subfolders", "Question.List"})
        section.Key(key, LanguageEntry::Words, "s");
    return section;
}

/// The strip of notices, whose texts are made of those below.
void AddNotices(Section& section)
{
    section.Captioned({"cmdErrorLog"});
    section.Captioned({"lblNotice", "lblMoreNotices", "cmdCloseNotice"}, LanguageEntry::None);
    for (const char* key :
         {"Notice.Name", "Notice.FileMissing", "Notice.FolderMissing", "Notice.NotPermitted", "Notice.InUse",
          "Notice.DiskFull", "Notice.OutOfMemory", "Notice.TooManyPairs", "Notice.OtherKind", "Notice.OtherVersion",
          "Notice.CantTake", "Notice.Cut", "Notice.Damaged", "Notice.TooManyRows"})
        section.Key(key);
    for (const char* key : {"Notice.NotKept", "Notice.NotRestored", "Notice.DropNotKept"})
        section.Key(key, LanguageEntry::Words, "s");
    for (const char* key : {"Notice.NotSaved", "Notice.ListNotRead", "Notice.NotOpened", "Notice.NotImported",
                            "Notice.ImportedInPart", "Notice.NotExported"})
        section.Key(key, LanguageEntry::Words, "is");
    for (const char* key : {"Notice.More", "Notice.ErrorInRow"})
        section.Key(key, LanguageEntry::Words, "d");
    section.Key("Notice.Columns", LanguageEntry::Words, "di");
    section.Key("Notice.LineFeeds", LanguageEntry::Words, "ds");
    for (const char* key : {"Notice.FoldersNotRead", "Notice.Header"})
        section.Key(key, LanguageEntry::Words, "dis");
}

void AddMenu(Section& section)
{
    for (const char* item : {"mnuFile", "mnuOpen", "menuSave", "menuSaveAs", "mnuRecent", "mnuExit", "menuOption",
                             "mnuChangeLanguage", "mnuStartSearching", "mnuStartReplacing", "mnuImportList",
                             "mnuExportList", "mnuHelp", "mnuHelp1", "mnuHomePage", "mnuAbout"})
        section.Key(std::string(item) + ".caption");
    for (const char* item : {"mnuSep1", "mnuSep2", "mnuSep3", "mnuSep5"})
        section.Key(std::string(item) + ".caption", LanguageEntry::Separator);
}

/// The context menu of the grid of pairs.
void AddGridMenu(Section& section)
{
    for (const char* item :
         {"Undo", "Redo", "Cut", "Copy", "Paste", "Add", "Delete", "Swap", "Up", "Down", "SelectAll", "Find"})
        section.Key(std::string("mnuPair") + item + ".caption");
}

/// What stands in an empty grid of a list that comes from a file, and above one whose pairs are not used.
void AddListNotices(Section& section)
{
    section.Captioned({"lblPairsNotice"}, LanguageEntry::None);
    for (const char* key : {"grdItems.FileText", "ListNotice.NotUsed", "ListNotice.Imported"})
        section.Key(key, LanguageEntry::Words, "s");
}

/// The bar that looks for a text in the list of pairs.
void AddFindBar(Section& section)
{
    section.Captioned({"cmdFindPrevious", "cmdFindNext", "cmdFindClose"});
    section.Captioned({"lblFindResult"}, LanguageEntry::None);  // it says what came of it
    section.Tip("txtFindPair");
    section.Key("txtFindPair.EmptyText");
    section.Key("FindInList.Nothing");
    section.Key("FindInList.Place", LanguageEntry::Words, "di");
}

Section MainWindow()
{
    Section section("frmMain");
    section.Captioned({"cmdStartReplacing(0)",
                       "cmdStartReplacing(1)",
                       "cmdAdd",
                       "cmdDelete",
                       "cmdSwap",
                       "optLoad(0)",
                       "optLoad(1)",
                       "optFileProcess(0)",
                       "optFileProcess(1)",
                       "chkIncludesubfolders",
                       "chkSelectAll",
                       "chkMatchCase",
                       "chkMatchWholeWord",
                       "chkHAlfFulll",
                       "chkPromptOnReplace",
                       "chkCPUUsage",
                       "chkRequireCount",
                       "chkReadOnlyFile",
                       "chkAllowAlert",
                       "chkProccessLongestFileFirst",
                       "chkBackupMode",
                       "chkKeepOiginal",
                       "lblStartfolder",
                       "lblSpreadsheettypes",
                       "lblSearchLocation",
                       "lblISOVersion",
                       "lblRevison",
                       "lblRevisionBy",
                       "lblPasswordOpen",
                       "lblRestartFileCount",
                       "lblRestartAfterSecond"});
    section.Captioned({"cmdBrowse1", "cmdBrowse2", "cmdBrowse3", "fradivide", "lblFileCount", "lblEndless"},
                      LanguageEntry::None);
    section.Key("lblFileCount.Counting");
    section.Key("lblFileCount.Totals", LanguageEntry::Words, "di");
    section.Key("lblFileCount.Unread", LanguageEntry::Words, "d");
    section.Key("Endless.Pairs", LanguageEntry::Words, "s");
    section.Key("Endless.Pair", LanguageEntry::Words, "ds");
    for (const char* control :
         {"cboSpreadsheetType", "cboversion", "txtGetFileName", "txtStartFolder", "txtLoadsearch", "txtRevisonProperty",
          "txtPasswordOpen", "lstRestartAfterSecond", "lstRestartFileCount", "lstLookIn", "grdItems", "Toolbar1"})
        section.Tip(control);
    for (const char* frame : {"fraFileProcess", "fraReplacement", "frmOptions", "fremversioncontrol"})
        section.Key(std::string(frame) + ".Caption", LanguageEntry::None);
    section.Key("fraExcelControl.Caption");
    for (const char* button : {"1", "2", "4"})
        section.Key(std::string("Toolbar1.Buttons(") + button + ").ToolTipText");
    section.Key("Toolbar1.Buttons(3).ToolTipText", LanguageEntry::None);  // a gap between buttons
    for (const char* tab : {"0", "1", "2"})
        section.Key(std::string("SSTab1.TabCaption(") + tab + ")");
    for (const char* column : {"0", "1", "2", "3", "4", "5"})
        section.Key(std::string("vsflex.TextMatrix(0,") + column + ")");
    AddMenu(section);
    AddNotices(section);
    AddGridMenu(section);
    AddFindBar(section);
    AddListNotices(section);
    for (const char* key : {"Tabs.Name", "grdItems.EmptyText", "grdItems.EndlessTip", "frmMain.caption", "106", "107",
                            "109", "110", "111"})
        section.Key(key);
    return section;
}

/// The filter above the results, their totals, and the pane of hits.
void AddHits(Section& section)
{
    section.Captioned({"chkOnlyWithHits"});
    // Their texts are made of those below.
    section.Captioned({"lblTotals", "lblHits", "lblHitsNotice"}, LanguageEntry::None);
    for (const char* key :
         {"txtFilter.EmptyText", "txtFilter.ToolTipText", "mnuOpenHit.caption",   "Hits.Name",
          "Hits.Choose",         "Hits.Nothing",          "Hits.FirstOnly",       "Hits.NoRoom",
          "Hits.NotCounted",     "Hits.NotChanged",       "Hits.SlideMaster",     "Hits.TitleMaster",
          "Hits.HandoutMaster",  "Hits.NotesMaster",      "Hits.BuiltInProperty", "Hits.CustomProperty",
          "Hits.Header",         "Hits.Footer",           "Hits.Shape",           "Hits.LinkSource"})
        section.Key(key);
    for (const char* key : {"Totals.Files", "Totals.Pairs", "Totals.Hits", "Totals.Locations", "Hits.More",
                            "Hits.Slide", "Hits.Notes", "Hits.Hyperlink", "Hits.NumberedShape", "Hits.Paragraph"})
        section.Key(key, LanguageEntry::Words, "d");
    for (const char* key : {"Totals.FilesOf", "Hits.OfFile"})
        section.Key(key, LanguageEntry::Words, "di");
    section.Key("Hits.OfPair", LanguageEntry::Words, "dis");
    for (const char* key : {"Hits.Named", "Hits.Joined"})
        section.Key(key, LanguageEntry::Words, "is");
}

/// The context menus of the results, and what becomes of the backups.
void AddResultMenu(Section& section)
{
    for (const char* item :
         {"mnuCopyNode", "mnuExpandAll", "mnuCollapseAll", "mnuOpenFile", "mnuOpenFolder", "mnuCopyPath",
          "mnuRestoreFile", "mnuRemoveBackup", "mnuRestoreAll", "mnuRemoveAllBackups"})
        section.Key(std::string(item) + ".caption");
    for (const char* key : {"Tabs.Name", "pgbar1.Name", "panelWarning.Name"})
        section.Key(key);
    for (const char* key : {"Backups.AskRestore", "Backups.AskRemove"})
        section.Key(key, LanguageEntry::Words, "s");
    for (const char* key :
         {"Backups.AskRestoreAll", "Backups.AskRemoveAll", "Backups.Restored", "Backups.Removed", "Backups.Failed"})
        section.Key(key, LanguageEntry::Words, "d");
}

/// How a run goes on and ends, and its failures.
void AddRun(Section& section)
{
    section.Captioned({"lblAdded", "cmdFailures", "cmdClose", "lblStopping", "cmdGiveUp"});
    section.Captioned({"lblOutcome", "lblStuck", "lblRemaining"}, LanguageEntry::None);
    for (const char* label : {"lblFailures", "lblNotProcessed"})
        section.Tip(label);
    for (const char* key : {"Failures.Name", "Failures.File", "Failures.Reason"})
        section.Key(key);
    for (const char* key : {"lblFailures.caption", "lblNotProcessed.caption", "Outcome.Done"})
        section.Key(key, LanguageEntry::Words, "d");
    for (const char* key : {"Outcome.Cancelled", "Outcome.Failed"})
        section.Key(key, LanguageEntry::Words, "di");
    for (const char* key : {"Failures.OfRun", "Stuck.File", "Remaining.Time"})
        section.Key(key, LanguageEntry::Words, "s");
    section.Key("Stuck.Pair", LanguageEntry::Words, "ds");
}

Section ProcessingWindow()
{
    Section section("frmProcessingDocuments");
    AddHits(section);
    AddRun(section);
    section.Captioned({"lblWarning", "lblelapsedSecs", "lblRunFailed", "cmdOK", "cmdCopyLog", "cmdSaveReport",
                       "cmdCommand(0)", "cmdCommand(1)", "cmdErrorLog"});
    AddResultMenu(section);
    for (const char* label : {"lblDocChanged", "lblChangesMade", "lblNotOpened"})
        section.Tip(label);
    // The captions of these labels are the texts of a run, too.
    section.Key("lblDocChanged.caption", LanguageEntry::Words, "dis");
    section.Key("lblChangesMade.Caption", LanguageEntry::Words, "d");
    section.Key("lblNotOpened.caption", LanguageEntry::Words, "d");
    section.Key("trvChangedFiles.CountedOnly");
    section.Key("trvChangedFiles.Warning", LanguageEntry::Words, "s");
    for (const char* key : {"lblDocChanged.caption1", "lblDocChanged.caption2"})
        section.Key(key, LanguageEntry::Words, "di");
    for (const char* key : {"lblChangesMade.Caption1", "lblChangesMade.Caption4"})
        section.Key(key, LanguageEntry::Words, "d");
    for (const char* key :
         {"lblChangesMade.Caption2", "lblChangesMade.Caption3", "lblChangesMade.Caption5", "cmdOK.CANCELcaption",
          "cmdOK.OKcaption", "frmProcessingDocuments.caption", "frmMain.caption"})
        section.Key(key);
    section.Key("SSTab1.TabCaption(0)");
    for (const char* tab : {"(1)", "(2)", "(3)"}) {
        section.Key(std::string("SSTab1.TabCaption") + tab);
        section.Key(std::string("SSTab1.TabCaption1") + tab);
    }
    return section;
}

Section LanguageDialog()
{
    Section section("frmChangeLanguage");
    for (const char* key :
         {"lblLanguage.caption", "cmdOK.caption", "cmdCancel.caption", "frmProcessingDocuments.caption"})
        section.Key(key);
    return section;
}

Section KeptReport()
{
    Section section("Report");
    for (const char* key :
         {"language",     "findTitle",  "replaceTitle", "dryRunTitle", "dryRun",       "started",
          "duration",     "project",    "engine",       "builtIn",     "occurrences",  "found",
          "nothingFound", "changed",    "wouldChange",  "countedOnly", "unchanged",    "failed",
          "notProcessed", "failures",   "pairs",        "files",       "file",         "state",
          "reason",       "number",     "find",         "replaceWith", "places",       "place",
          "slide",        "slideTitle", "design",       "property",    "hyperlink",    "shape",
          "shapeName",    "paragraph",  "position",     "length",      "before",       "hit",
          "after",        "becomes",    "note",         "nowhere",     "notCounted",   "notChanged",
          "header",       "footer",     "warning",      "filter",      "filterTip",    "onlyWithHits",
          "expand",       "collapse",   "Dialog.Title", "Dialog.Page", "Dialog.Table", "Dialog.WrongName"})
        section.Key(key);
    for (const char* key : {"cancelled", "brokenOff", "pageIsFull", "furtherHits", "otherPairs"})
        section.Key(key, LanguageEntry::Words, "d");
    section.Key("shown", LanguageEntry::Words, "di");
    section.Key("Dialog.Failed", LanguageEntry::Words, "s");
    return section;
}

}  // namespace

std::vector<LanguageKey> LanguageKeys()
{
    std::vector<LanguageKey> keys;
    for (const Section& section : {Messages(), MainWindow(), ProcessingWindow(), LanguageDialog(), KeptReport()})
        std::ranges::copy(section.Keys(), std::back_inserter(keys));
    return keys;
}

}  // namespace tessarine::test
