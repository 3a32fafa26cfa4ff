#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include "app/GlobalState.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "platform/Locale.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

/// White, or the desktop's own colour for text, while the box can be used; the colour of buttons otherwise.
void EnableBox(QWidget* panel, QLineEdit* box, QPushButton* browse, bool isEnabled)
{
    for (QWidget* control : std::initializer_list<QWidget*>{panel, box, browse})
        control->setEnabled(isEnabled);
    QPalette colours;
    if (!isEnabled)
        colours.setColor(QPalette::Base, colours.color(QPalette::Button));
    box->setPalette(colours);
}

}  // namespace

void frmMain::Mark()
{
    if (!IsFillingItem)
        MarkAlways();
}

void frmMain::MarkAlways()
{
    isMarkedBesidesList_ = true;
    if (!isModifed_)
        PutIsModifed(true);
}

void frmMain::optFileProcess_Click(int Index)
{
    LogAndReturn({u"optFileProcess_Click", place}, [&] {
        EnableBox(picBrowse2, txtStartFolder, cmdBrowse2, Index == 0);
        EnableBox(picBrowse3, txtGetFileName, cmdBrowse3, Index == 1);
        Mark();
    });
}

void frmMain::optLoad_Click(int Index)
{
    LogAndReturn({u"optLoad_Click", place}, [&] {
        const bool isInternal = Index == 1;
        wasImportedUnused_ = false;
        for (QWidget* control : std::initializer_list<QWidget*>{grdItems, lstLookIn, chkMatchCase, chkMatchWholeWord,
                                                                chkPromptOnReplace, chkHAlfFulll, cmdAdd, cmdDelete})
            control->setEnabled(isInternal);
        grdItems->ShowAsActive(isInternal);
        EnableBox(picBrowse1, txtLoadsearch, cmdBrowse1, !isInternal);
        if (isInternal)
            cmdDelete->setEnabled(grdItems->Rows() > 1);
        MarkAlways();  // also while the form is being filled: its callers clear the mark
        EnableDisableControl();
    });
}

void frmMain::cboversion_Change()
{
    LogAndReturn({u"cboversion_Change", place}, [this] {
        Mark();
        if (!NumberFromText(FromQt(cboversion->currentText())))
            cboversion->clearEditText();
    });
}

void frmMain::chkProccessLongestFileFirst_Click()
{
    // Intended: marks the job also while the form is being filled, unlike its neighbours. That does no harm, because
    // optLoad_Click does the same, and who fills the form decides what becomes of the mark.
    LogAndReturn({u"chkProccessLongestFileFirst_Click", place}, [this] { MarkAlways(); });
}

void frmMain::SetSearchOptions()
{
    LogAndReturn({u"SetSearchOptions", place}, [this] {
        if (IsFillingItem)
            return;
        const std::vector<std::int32_t> rows = grdItems->SelectedRows();
        if (rows.empty())
            return;
        const auto& list = *NotNull(NotNull(CurrentProject)->FindAndReplaceList);
        AsOneStep(rows, [&] {
            for (const std::int32_t row : rows) {
                const auto item = list.Item(row);
                OptionSetting& setting = *NotNull(NotNull(item)->OptionSetting);
                setting.MatchCase = chkMatchCase->isChecked();
                setting.MatchWholeWord = chkMatchWholeWord->isChecked();
                setting.PromptOnReplace = chkPromptOnReplace->isChecked();
                SetItemOnGridRow(row, item);
            }
        });
        MarkListChange();
    });
}

void frmMain::pnlLoadOptions_MouseMove()
{
    LogAndReturn({u"pnlLoadOptions_MouseMove", place}, [this] {
        grdItems->Items().SetUnderlinedRow(0);
        LastHoverRow = 0;
    });
}

}  // namespace tessarine
