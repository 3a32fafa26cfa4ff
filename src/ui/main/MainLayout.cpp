#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>

#include "shell/WindowPlace.h"
#include "ui/main/Controls.h"
#include "ui/main/EndlessNotice.h"
#include "ui/main/EntryBox.h"
#include "ui/main/FindBar.h"
#include "ui/main/Frame.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/NoticeStrip.h"
#include "ui/main/TabPage.h"

namespace tessarine
{

namespace
{

// Room for the start widths of the grid's columns and a dozen rows, on a small screen too.
constexpr int startWidth = 860;
constexpr int startHeight = 680;

}  // namespace

void frmMain::BuildTabs()
{
    auto* const whole = new QWidget(this);
    auto* const column = new QVBoxLayout(whole);
    fraNotice = new NoticeStrip;
    column->addWidget(fraNotice);
    SSTab1 = Named<QTabWidget>("SSTab1");
    SSTab1->addTab(new TabPage(BuildReplacementTab()), "Replacement");
    SSTab1->addTab(new TabPage(BuildFilesTab()), "File to process");
    SSTab1->addTab(new TabPage(BuildOptionsTab()), "Options");
    column->addWidget(SSTab1, 1);
    setCentralWidget(whole);
    resize(FittingSize(*this, {startWidth, startHeight}));
}

void frmMain::BuildStartButtons()
{
    auto* const picButtom = Named<QWidget>("picButtom");
    auto* const row = new QHBoxLayout(picButtom);
    row->setContentsMargins({});
    cmdStartReplacing[0] = NamedMember<QPushButton>("cmdStartReplacing", 0, Icon("replace"), "Starting replacing");
    cmdStartReplacing[1] = NamedMember<QPushButton>("cmdStartReplacing", 1, Icon("search"), "Start Searching");
    row->addStretch();
    row->addWidget(cmdStartReplacing[1]);
    row->addWidget(cmdStartReplacing[0]);
    lblEndless = new EndlessNotice(grdItems->Items(), centralWidget());
    centralWidget()->layout()->addWidget(lblEndless);
    centralWidget()->layout()->addWidget(picButtom);
    connect(optLoad[0], &QRadioButton::toggled, lblEndless,
            [this](bool isFile) { lblEndless->PutIsGridTaken(!isFile); });
}

/// As the eye goes: the notices, down the tab in front, then the start buttons.
void frmMain::SetTabOrder()
{
    QList<QWidget*> order{fraNotice->lblNotice,
                          fraNotice->cmdErrorLog,
                          fraNotice->cmdCloseNotice,
                          SSTab1,
                          optLoad[0],
                          txtLoadsearch,
                          cmdBrowse1,
                          optLoad[1],
                          grdItems};
    order += findBar_->TabOrder();
    order += {cmdAdd, cmdDelete, cmdSwap, lstLookIn, chkSelectAll, chkMatchCase, chkMatchWholeWord, chkHAlfFulll,
              chkPromptOnReplace,
              //
              optFileProcess[0], txtStartFolder, cmdBrowse2, chkIncludesubfolders, cboSpreadsheetType,
              optFileProcess[1], txtGetFileName, cmdBrowse3,
              //
              chkBackupMode, chkKeepOiginal, chkReadOnlyFile, chkAllowAlert, chkRequireCount, chkCPUUsage,
              chkProccessLongestFileFirst, txtRevisonProperty, cboversion, txtPasswordOpen, lstRestartFileCount,
              lstRestartAfterSecond,
              //
              cmdStartReplacing[1], cmdStartReplacing[0]};
    QWidget* before = nullptr;
    for (QWidget* const control : std::as_const(order)) {
        if (before != nullptr)
            setTabOrder(before, control);
        before = control;
    }
}

void frmMain::ConnectHandlers()
{
    const auto click = [this](QPushButton* button, void (frmMain::*handler)()) {
        connect(button, &QPushButton::clicked, this, [this, handler] { (this->*handler)(); });
    };
    click(cmdAdd, &frmMain::cmdAdd_Click);
    click(cmdDelete, &frmMain::cmdDelete_Click);
    click(cmdSwap, &frmMain::cmdSwap_Click);
    click(cmdBrowse1, &frmMain::cmdBrowse1_Click);
    click(cmdBrowse2, &frmMain::cmdBrowse2_Click);
    click(cmdBrowse3, &frmMain::cmdBrowse3_Click);
    click(fraNotice->cmdErrorLog, &frmMain::cmdErrorLog_Click);

    // An option button, a check box and a text box tell of every change, also of one that code makes.
    for (const int index : {0, 1}) {
        const auto i = static_cast<std::size_t>(index);
        connect(optLoad[i], &QRadioButton::toggled, this, [this, index](bool isOn) {
            if (isOn)
                optLoad_Click(index);
        });
        connect(optFileProcess[i], &QRadioButton::toggled, this, [this, index](bool isOn) {
            if (isOn)
                optFileProcess_Click(index);
        });
        connect(cmdStartReplacing[i], &QPushButton::clicked, this,
                [this, index] { cmdStartReplacing_Click(static_cast<std::int16_t>(index)); });
    }
    // Intended: chkCPUUsage and txtLoadsearch do not mark the job, although they are saved: both tell how this machine
    // works, not what becomes of the presentations.
    for (QCheckBox* box :
         {chkAllowAlert, chkBackupMode, chkIncludesubfolders, chkKeepOiginal, chkReadOnlyFile, chkRequireCount})
        connect(box, &QCheckBox::stateChanged, this, &frmMain::Mark);
    connect(chkProccessLongestFileFirst, &QCheckBox::stateChanged, this, &frmMain::chkProccessLongestFileFirst_Click);
    for (QCheckBox* box : {chkMatchCase, chkMatchWholeWord, chkPromptOnReplace, chkHAlfFulll})
        connect(box, &QCheckBox::stateChanged, this, &frmMain::SetSearchOptions);
    connect(chkSelectAll, &QCheckBox::stateChanged, this, &frmMain::chkSelectAll_Click);
    connect(lstLookIn, &QListWidget::itemChanged, this, &frmMain::lstLookIn_ItemCheck);
    for (EntryBox* box : {txtGetFileName, txtStartFolder, txtRevisonProperty, txtPasswordOpen})
        connect(box, &EntryBox::textChanged, this, &frmMain::Mark);
    for (EntryBox* box : {txtGetFileName, txtStartFolder, txtLoadsearch})
        connect(box, &EntryBox::DblClick, this, [this, box] { OpenTextOf(*box); });
    for (NumberBox* box : {lstRestartFileCount, lstRestartAfterSecond})
        connect(box, &NumberBox::Click, this, &frmMain::Mark);  // a click counts as a change, typing does not
    // The first tells of changes, the second also of choosing the same entry again.
    connect(cboSpreadsheetType, &QComboBox::currentIndexChanged, this, &frmMain::Mark);
    connect(cboSpreadsheetType, &QComboBox::activated, this, &frmMain::Mark);
    // For what is typed alone; an entry that is chosen only marks the job, below.
    connect(cboversion->lineEdit(), &QLineEdit::textEdited, this, &frmMain::cboversion_Change);
    connect(cboversion, &QComboBox::activated, this, &frmMain::Mark);
}

void frmMain::ConnectGrid()
{
    connect(grdItems, &ItemsGrid::AfterEdit, this, [this](std::int32_t Row, int Col, const QString& before) {
        KeepTypedText(Row, Col, before);
        grdItems_AfterEdit(Row, Col);
    });
    connect(grdItems, &ItemsGrid::RowColChange, this, [this](std::int32_t oldRow, int, std::int32_t newRow, int) {
        grdItems_BeforeRowColChange(oldRow);
        grdItems_AfterRowColChange(oldRow, newRow);
    });
    grdItems->KeyDownEdit = [this](const QKeyEvent& Key) { return grdItems_KeyDownEdit(Key); };
    connect(grdItems, &ItemsGrid::KeyDown, this, &frmMain::grdItems_KeyDown);
    connect(grdItems, &ItemsGrid::MouseMove, this, &frmMain::grdItems_MouseMove);
    connect(findBar_, &FindBar::TextEdited, this, &frmMain::FindTyped);
    connect(findBar_, &FindBar::Next, this, &frmMain::FindNext);
    connect(findBar_, &FindBar::Previous, this, &frmMain::FindPrevious);
    connect(findBar_, &FindBar::Closed, grdItems, qOverload<>(&QWidget::setFocus));
    // The panel around the grid gets no move when the pointer leaves at another edge, so leaving counts as one.
    connect(grdItems, &ItemsGrid::MouseLeave, this, &frmMain::pnlLoadOptions_MouseMove);
}

}  // namespace tessarine
