#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "model/JobProperties.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"
#include "platform/Locale.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

/// A grey box is not checked.
bool IsChecked(const QCheckBox* box)
{
    return box->checkState() == Qt::Checked;
}

/// The number that a text stands for, rounded; 0 for any other text. Raises Overflow when it does not fit in 32 bits.
std::int32_t CountIn(const QLineEdit* box)
{
    const std::optional<double> number = NumberFromText(FromQt(box->text()));
    return number ? RoundedToInt32(*number) : 0;
}

/// Makes an entry that reads as the text of its box the chosen one. Qt does that itself when the box loses the focus,
/// and tells of it as of a choice of the user's.
void ChooseEntryOfText(QComboBox& box)
{
    if (const int entry = box.findText(box.currentText()); entry != -1)
        box.setCurrentIndex(entry);
}

String TextOf(const QLineEdit* box)
{
    return FromQt(box->text());
}

}  // namespace

void frmMain::FillProjectObject()
{
    LogAndReturn({u"FillProjectObject", place}, [this] {
        ProjectOptions& options = *NotNull(NotNull(CurrentProject)->options);
        options.AllowAlerts = IsChecked(chkAllowAlert);
        options.BackupMode = IsChecked(chkBackupMode);
        options.ComaSepAllowedExtensions = FromQt(cboSpreadsheetType->currentText());
        options.FileToProcessFolderPath = TextOf(txtStartFolder);
        options.FileToProcessFilepath = TextOf(txtGetFileName);
        options.FileToProcessSourceType = optFileProcess[0]->isChecked() ? FileSource::Folder : FileSource::List;
        options.Include_Subfolders = IsChecked(chkIncludesubfolders);
        options.KeepOriginalFileDate = IsChecked(chkKeepOiginal);
        options.ProcessLongestFindwhatFirst = IsChecked(chkProccessLongestFileFirst);
        options.ProcessReadonlyFiles = IsChecked(chkReadOnlyFile);
        options.RestartApplicationAfterFiles = CountIn(lstRestartFileCount);
        options.RestartApplicationAfterSeconds = CountIn(lstRestartAfterSecond);
        options.RevisionDocumentPropertyIncrimentedBy = FromQt(cboversion->currentText());
        options.RevisionDocumentPropertyName = TextOf(txtRevisonProperty);
        options.RequiredFindAndReplaceCount = IsChecked(chkRequireCount);
        options.CPUUsage = IsChecked(chkCPUUsage);
        // Intended: the password is not taken over, so that no typed password reaches a file.

        CustomProperties& properties = *NotNull(CurrentProject->CustomProperies);
        // From the front: the others move up after each removal.
        while (properties.Count() > 0)
            properties.Remove(1);
        const ListSource source = optLoad[0]->isChecked() ? ListSource::External : ListSource::Internal;
        AddJobProperties(properties, {TextOf(txtLoadsearch), source, CurrentLanguageFile});
    });
}

void frmMain::LoadProjectOnForm()
{
    LogAndReturn({u"LoadProjectOnForm", place}, [this] {
        IsFillingItem = true;
        const ProjectOptions& options = *NotNull(NotNull(CurrentProject)->options);
        chkAllowAlert->setChecked(options.AllowAlerts);
        chkBackupMode->setChecked(options.BackupMode);
        txtStartFolder->setText(ToQt(options.FileToProcessFolderPath));
        txtGetFileName->setText(ToQt(options.FileToProcessFilepath));
        optFileProcess[options.TakesListedFiles() ? 1 : 0]->setChecked(true);
        chkIncludesubfolders->setChecked(options.Include_Subfolders);
        chkKeepOiginal->setChecked(options.KeepOriginalFileDate);
        txtPasswordOpen->setText(ToQt(options.PasswordToOpen));
        chkProccessLongestFileFirst->setChecked(options.ProcessLongestFindwhatFirst);
        chkReadOnlyFile->setChecked(options.ProcessReadonlyFiles);
        chkRequireCount->setChecked(options.RequiredFindAndReplaceCount);
        chkCPUUsage->setChecked(options.CPUUsage);
        lstRestartFileCount->setText(QString::number(options.RestartApplicationAfterFiles));
        lstRestartAfterSecond->setText(QString::number(options.RestartApplicationAfterSeconds));
        if (const QString text = ToQt(options.RevisionDocumentPropertyIncrimentedBy);
            text != cboversion->currentText()) {
            cboversion->setEditText(text);
            ChooseEntryOfText(*cboversion);
            // Empties the box again when the text is not a number.
            cboversion_Change();
        }
        txtRevisonProperty->setText(ToQt(options.RevisionDocumentPropertyName));

        listHistory_.Clear();  // of the job before
        // With a pair in the list this ends IsFillingItem already. The callers clear the mark that comes of it.
        LoadGrid(*NotNull(CurrentProject->FindAndReplaceList));

        const CustomProperties& properties = *NotNull(CurrentProject->CustomProperies);
        txtLoadsearch->setText(ToQt(ListFileOf(properties)));
        const int index = ListSourceOf(properties) == ListSource::External ? 0 : 1;
        optLoad[static_cast<std::size_t>(index)]->setChecked(true);
        // Called here, because a button that was chosen already tells of no change.
        optLoad_Click(index);

        // Without a match the entry that is chosen stays.
        const String wanted = FoldCase(options.ComaSepAllowedExtensions);
        for (int entry = 0; entry < cboSpreadsheetType->count(); ++entry) {
            if (FoldCase(FromQt(cboSpreadsheetType->itemText(entry))) == wanted) {
                cboSpreadsheetType->setCurrentIndex(entry);
                break;
            }
        }
        IsFillingItem = false;
    });
}

void frmMain::EnableDisableControl()
{
    LogAndReturn({u"EnableDisableControl", place}, [this] {
        const bool isInternal = optLoad[1]->isChecked();
        const bool canEdit = isInternal && grdItems->Rows() > 1;
        const std::array<QWidget*, 8> ofItems{grdItems,     lstLookIn,         cmdDelete,    chkSelectAll,
                                              chkMatchCase, chkMatchWholeWord, chkHAlfFulll, chkPromptOnReplace};
        for (QWidget* control : ofItems)
            control->setEnabled(canEdit);
        cmdAdd->setEnabled(isInternal);
        TellListUse();
    });
}

}  // namespace tessarine
