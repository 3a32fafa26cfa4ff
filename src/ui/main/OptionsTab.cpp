#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "ui/main/Controls.h"
#include "ui/main/EntryBox.h"
#include "ui/main/Frame.h"
#include "ui/main/frmMain.h"
#include "ui/main/TabLayout.h"
#include "ui/main/UpDown.h"

namespace tessarine
{

namespace
{

QLabel* LabelOf(QWidget* control, const char* name, const char* caption)
{
    auto* const label = Named<QLabel>(name, caption);
    label->setBuddy(control);
    return label;
}

/// A count and its arrow buttons.
QWidget* WithArrows(NumberBox* box, const char* nameOfArrows)
{
    constexpr int widestCount = 10;  // characters
    auto* const whole = new QWidget;
    auto* const row = new QHBoxLayout(whole);
    row->setContentsMargins({});
    row->setSpacing(0);
    box->setMaximumWidth(box->fontMetrics().averageCharWidth() * (widestCount + 3));
    row->addWidget(box);
    auto* const arrows = Named<UpDown>(nameOfArrows, *box);
    row->addWidget(arrows);
    return whole;
}

}  // namespace

QWidget* frmMain::BuildOptionsTab()
{
    auto* const frmOptions = Named<Frame>("frmOptions");
    auto* const tab = new QVBoxLayout(frmOptions);
    tab->setSpacing(tab->spacing() * 2);
    tab->addWidget(BuildTreatment());
    auto* const fradivide = Named<QLabel>("fradivide");
    fradivide->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    tab->addWidget(fradivide);
    tab->addWidget(BuildVersionControl());
    tab->addWidget(BuildPowerPointControl());
    tab->addStretch();
    return frmOptions;
}

/// How files are treated.
QWidget* frmMain::BuildTreatment()
{
    chkBackupMode = Named<QCheckBox>("chkBackupMode", "BackUp Mode");
    chkKeepOiginal = Named<QCheckBox>("chkKeepOiginal", "Keep the original file date");
    chkReadOnlyFile = Named<QCheckBox>("chkReadOnlyFile", "Process read only File ");
    chkAllowAlert = Named<QCheckBox>("chkAllowAlert", "Allow Alerts");
    chkRequireCount = Named<QCheckBox>("chkRequireCount", "Required Find And Replace Count");
    chkCPUUsage = Named<QCheckBox>("chkCPUUsage", "Force to Control CPU Usage");
    chkProccessLongestFileFirst =
        Named<QCheckBox>("chkProccessLongestFileFirst", "Process longest 'Find What' string first");

    auto* const part = new QWidget;
    auto* const grid = new QGridLayout(part);
    grid->setContentsMargins({});
    grid->setHorizontalSpacing(ColumnGap);
    constexpr int rows = 4;
    int cell = 0;
    // Down the columns, in the order in which Tab goes through them.
    for (QCheckBox* box : {chkBackupMode, chkKeepOiginal, chkReadOnlyFile, chkAllowAlert, chkRequireCount, chkCPUUsage,
                           chkProccessLongestFileFirst}) {
        grid->addWidget(box, cell % rows, cell / rows);
        ++cell;
    }
    grid->setColumnStretch(2, 1);
    return part;
}

/// The revision number, and the password.
QWidget* frmMain::BuildVersionControl()
{
    txtRevisonProperty = Named<EntryBox>("txtRevisonProperty");
    cboversion = Named<QComboBox>("cboversion");
    cboversion->setEditable(true);
    cboversion->addItems({"1.0", "0.1"});
    // A completer would make "1.0" of a typed "1".
    cboversion->setCompleter(nullptr);
    cboversion->lineEdit()->setAcceptDrops(false);  // files that are dropped are for the window
    cboversion->setInsertPolicy(QComboBox::NoInsert);
    cboversion->setCurrentIndex(-1);  // no entry is chosen at first
    txtPasswordOpen = Named<EntryBox>("txtPasswordOpen");
    txtPasswordOpen->setEchoMode(QLineEdit::Password);

    auto* const fremversioncontrol = Named<QGroupBox>("fremversioncontrol");
    auto* const grid = new QGridLayout(fremversioncontrol);
    auto* const heading = Named<QLabel>("lblISOVersion", "ISO 9001 Version Conrtol ");
    heading->setStyleSheet("font-weight: bold");
    grid->addWidget(heading, 0, 0, 1, 4);
    grid->addWidget(LabelOf(txtRevisonProperty, "lblRevison", "'Revision' Document  Property Name"), 1, 0);
    grid->addWidget(txtRevisonProperty, 1, 1);
    grid->addWidget(LabelOf(cboversion, "lblRevisionBy", "By"), 1, 2);
    grid->addWidget(cboversion, 1, 3);
    grid->addWidget(LabelOf(txtPasswordOpen, "lblPasswordOpen", "Password For Open"), 2, 0);
    grid->addWidget(txtPasswordOpen, 2, 1);
    grid->setColumnStretch(1, 1);
    return fremversioncontrol;
}

/// The restarts of PowerPoint.
QWidget* frmMain::BuildPowerPointControl()
{
    lstRestartFileCount = Named<NumberBox>("lstRestartFileCount", "0");
    lstRestartAfterSecond = Named<NumberBox>("lstRestartAfterSecond", "0");

    auto* const fraExcelControl = Named<QGroupBox>("fraExcelControl", "Microsoftt  Excel Control");
    auto* const grid = new QGridLayout(fraExcelControl);
    auto* const perFiles = LabelOf(lstRestartFileCount, "lblRestartFileCount",
                                   "Restart Microsoft Excel after this many document(0 for never)");
    auto* const perSeconds =
        LabelOf(lstRestartAfterSecond, "lblRestartAfterSecond",
                "Restart Microsoft Excel atomatically if unresponsive for this many second(0 for never)");
    for (QLabel* label : {perFiles, perSeconds})
        label->setWordWrap(true);
    grid->addWidget(perFiles, 0, 0);
    grid->addWidget(WithArrows(lstRestartFileCount, "UpDown1"), 0, 1);
    grid->addWidget(perSeconds, 1, 0);
    grid->addWidget(WithArrows(lstRestartAfterSecond, "UpDown2"), 1, 1);
    grid->setColumnStretch(0, 1);
    return fraExcelControl;
}

}  // namespace tessarine
