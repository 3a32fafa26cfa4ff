
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "icons/Icons.h"
#include "shell/TaskbarProgress.h"
#include "ui/run/ElidedLabel.h"
#include "ui/run/FailureList.h"
#include "ui/run/FileProgressBar.h"
#include "ui/run/FilterBar.h"
#include "ui/run/frmProcessingDocuments.h"
#include "ui/run/HitsPane.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

namespace
{

template <class Control>
Control* MakeControl(const QString& name, QWidget* parent)
{
    auto* const control = new Control(parent);
    control->setObjectName(name);
    return control;
}

template <class Label>
QLabel* MakeLabel(const char* name, const QString& text, QWidget* parent)
{
    auto* const label = MakeControl<Label>(name, parent);
    label->setTextFormat(Qt::PlainText);  // paths and messages, whatever they look like
    label->setText(text);
    return label;
}

/// A button with some room beside its caption, whatever the language makes of it.
class RoomyButton : public QPushButton
{
public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override { return QPushButton::sizeHint() + QSize(2 * fontMetrics().averageCharWidth(), 0); }
};

QPushButton* MakeButton(const QString& name, const QString& text, QWidget* parent)
{
    auto* const button = MakeControl<RoomyButton>(name, parent);
    button->setText(text);
    button->setAutoDefault(true);  // Enter presses it when it has the focus
    return button;
}

}  // namespace

void frmProcessingDocuments::BuildControls()
{
    BuildWarning();
    BuildOutcome();
    BuildHits();
    panels = {BuildProgress(), BuildChangedFiles(), BuildTree("panelFilesNotChanged", trvNotChangedFiles, 1),
              BuildErrors()};
    const std::array captions{"&1 Progress", "&2 Files changes", "&3 Files not changes", "&4 Error"};
    for (std::size_t tab = 0; tab < panels.size(); ++tab)
        SSTab1->addTab(panels[tab], captions[tab]);
    BuildCounts();
    BuildCommands();
    BuildFileMenu();

    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(panelWarning);
    whole->addWidget(panelOutcome);
    whole->addWidget(splHits, 1);
    whole->addWidget(new LabelStrip(lblTotals));
    whole->addWidget(panelCommand);
    SetTabOrder();
    SSTab1->setFocus();  // a key pressed by mistake must not end a run
}

void frmProcessingDocuments::SetTabOrder()
{
    // As the eye meets them. Left alone, Tab would go by the order of making, and the trees are made first.
    QList<QWidget*> order{SSTab1, cmdGiveUp, cmdFailures, cmdErrorLog};
    order += filters[0]->TabOrder();
    order += {trvChangedFiles, cmdCommand[0], cmdCommand[1]};
    order += filters[1]->TabOrder();
    order += trvNotChangedFiles;
    order += filters[2]->TabOrder();
    order += {lstFailures, trvErrors, panelHits->focusProxy(), cmdCopyLog, cmdSaveReport, cmdClose, cmdOK};
    for (qsizetype at = 1; at < order.size(); ++at)
        setTabOrder(order[at - 1], order[at]);
}

void frmProcessingDocuments::BuildHits()
{
    splHits = MakeControl<QSplitter>("splHits", this);
    splHits->setOrientation(Qt::Vertical);  // a line of context wants the window's whole width
    splHits->setChildrenCollapsible(false);
    SSTab1 = MakeControl<QTabWidget>("SSTab1", splHits);
    SSTab1->setElideMode(Qt::ElideRight);  // captions in some languages are wider than a small screen
    panelHits = new HitsPane(splHits);
    for (int part = 0; part < splHits->count(); ++part)
        splHits->setStretchFactor(part, 1);  // both grow with the window
}

/// Beside a tab's name, which has a text of its own.
void frmProcessingDocuments::BuildCounts()
{
    // Without names, because their texts come from no language file.
    for (int tree = 0; tree < static_cast<int>(lblCount.size()); ++tree) {
        auto* const label = new QLabel(SSTab1->tabBar());
        label->setAttribute(Qt::WA_TransparentForMouseEvents);  // a click on it is one on the tab
        SSTab1->tabBar()->setTabButton(tree + 1, QTabBar::RightSide, label);
        lblCount[static_cast<std::size_t>(tree)] = label;
    }
}

void frmProcessingDocuments::BuildWarning()
{
    panelWarning = MakeControl<QFrame>("panelWarning", this);
    imgWarning = new QLabel(panelWarning);  // without a name, because its text comes from no caption
    const int size = fontMetrics().height() * 3 / 2;
    imgWarning->setPixmap(Icon("warning").pixmap(QSize(size, size), devicePixelRatioF()));
    lblWarning = MakeLabel<QLabel>("lblWarning", "123", panelWarning);
    lblWarning->setWordWrap(true);

    auto* const row = new QHBoxLayout(panelWarning);
    row->setContentsMargins({});
    row->addWidget(imgWarning);
    row->addWidget(lblWarning, 1);
}

void frmProcessingDocuments::BuildOutcome()
{
    panelOutcome = MakeControl<QFrame>("panelOutcome", this);
    lblOutcome = MakeLabel<QLabel>("lblOutcome", {}, panelOutcome);
    lblOutcome->setWordWrap(true);
    QFont font = lblOutcome->font();
    font.setBold(true);
    lblOutcome->setFont(font);
    auto* const row = new QHBoxLayout(panelOutcome);
    row->setContentsMargins({});
    row->addWidget(lblOutcome, 1);
    panelOutcome->hide();
}

QWidget* frmProcessingDocuments::BuildProgress()
{
    auto* const panelProgress = MakeControl<QWidget>("panelProgress", SSTab1);
    lblDocChanged = MakeLabel<ElidedLabel>("lblDocChanged", "Connecting to Excel...", panelProgress);
    pgbar1 = MakeControl<FileProgressBar>("pgbar1", panelProgress);
    lblChangesMade = MakeLabel<ElidedLabel>("lblChangesMade", "Change(s) made", panelProgress);
    lblelapsedSecs = MakeLabel<QLabel>("lblelapsedSecs", "Label1", panelProgress);
    lblRemaining = MakeLabel<QLabel>("lblRemaining", {}, panelProgress);
    lblStopping = MakeLabel<QLabel>("lblStopping", {}, panelProgress);
    lblStopping->hide();
    lblAdded = MakeLabel<QLabel>("lblAdded", {}, panelProgress);
    lblAdded->setWordWrap(true);
    lblAdded->hide();

    auto* const figures = new QHBoxLayout;
    figures->addWidget(new LabelStrip(lblChangesMade), 1);
    figures->addWidget(lblRemaining);
    figures->addWidget(lblelapsedSecs);
    auto* const column = new QVBoxLayout(panelProgress);
    // In heights of the font, so that the room grows with the user's text.
    const int margin = fontMetrics().height();
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin / 2);
    column->addWidget(new LabelStrip(lblDocChanged));
    column->addWidget(pgbar1);
    column->addLayout(figures);
    column->addWidget(lblStopping);
    column->addWidget(BuildStuck());
    column->addWidget(lblAdded);
    column->addSpacing(margin);
    column->addWidget(BuildFailures());
    column->addStretch();
    return panelProgress;
}

QWidget* frmProcessingDocuments::BuildStuck()
{
    panelStuck = MakeControl<QWidget>("panelStuck", this);
    lblStuck = MakeLabel<QLabel>("lblStuck", {}, panelStuck);
    lblStuck->setWordWrap(true);
    cmdGiveUp = MakeButton("cmdGiveUp", {}, panelStuck);
    auto* const row = new QHBoxLayout(panelStuck);
    row->setContentsMargins({});
    row->addWidget(lblStuck, 1);
    row->addWidget(cmdGiveUp);
    panelStuck->hide();
    return panelStuck;
}

QWidget* frmProcessingDocuments::BuildFailures()
{
    panelFailures = MakeControl<QWidget>("panelFailures", this);
    lblFailures = MakeLabel<QLabel>("lblFailures", {}, panelFailures);
    lblNotOpened = MakeLabel<QLabel>("lblNotOpened", {}, panelFailures);
    lblNotProcessed = MakeLabel<QLabel>("lblNotProcessed", {}, panelFailures);
    lblRunFailed = MakeLabel<QLabel>("lblRunFailed", {}, panelFailures);
    cmdFailures = MakeButton("cmdFailures", {}, panelFailures);
    cmdErrorLog = MakeButton("cmdErrorLog", {}, panelFailures);

    auto* const lines = new QVBoxLayout;
    for (QLabel* line : {lblFailures, lblNotOpened, lblNotProcessed, lblRunFailed}) {
        line->setWordWrap(true);
        lines->addWidget(line);
    }
    lines->addStretch();
    auto* const buttons = new QVBoxLayout;
    buttons->addWidget(cmdFailures);
    buttons->addWidget(cmdErrorLog);
    buttons->addStretch();
    auto* const row = new QHBoxLayout(panelFailures);
    row->setContentsMargins({});
    row->addLayout(lines, 1);
    row->addLayout(buttons);
    return panelFailures;
}

QWidget* frmProcessingDocuments::BuildChangedFiles()
{
    QWidget* const panel = BuildTree("panelFilesChanged", trvChangedFiles, 0);
    cmdCommand = {MakeButton("cmdCommand(0)", "Remove Backup Files", panel),
                  MakeButton("cmdCommand(1)", "Restore Backup Files", panel)};
    auto* const row = new QHBoxLayout;
    row->addWidget(cmdCommand[0]);
    row->addWidget(cmdCommand[1]);
    row->addStretch();
    static_cast<QVBoxLayout*>(panel->layout())->addLayout(row);
    return panel;
}

QWidget* frmProcessingDocuments::BuildErrors()
{
    QWidget* const panel = BuildTree("panelErrors", trvErrors, 2);
    splErrors = MakeControl<QSplitter>("splErrors", panel);
    splErrors->setOrientation(Qt::Vertical);
    splErrors->setChildrenCollapsible(false);
    lstFailures = new FailureList(splErrors);
    lstFailures->hide();  // until there is a failure
    panel->layout()->replaceWidget(trvErrors, splErrors);
    splErrors->addWidget(trvErrors);
    return panel;
}

QWidget* frmProcessingDocuments::BuildTree(const char* panelName, ResultTree* tree, int number)
{
    auto* const panel = MakeControl<QWidget>(panelName, SSTab1);
    auto* const column = new QVBoxLayout(panel);
    FilterBar*& filter = filters[static_cast<std::size_t>(number)];
    filter = new FilterBar(number, tree == trvChangedFiles, panel);
    column->addWidget(filter);
    column->addWidget(tree);
    return panel;
}

void frmProcessingDocuments::BuildCommands()
{
    panelCommand = MakeControl<QWidget>("panelCommand", this);
    cmdCopyLog = MakeButton("cmdCopyLog", "Copy log to clipboard", panelCommand);
    cmdSaveReport = MakeButton("cmdSaveReport", "Save report...", panelCommand);
    cmdSaveReport->setEnabled(false);  // until a run is over
    cmdClose = MakeButton("cmdClose", {}, panelCommand);
    cmdClose->hide();
    cmdOK = MakeButton("cmdOK", "OK", panelCommand);
    lblTotals = MakeLabel<ElidedLabel>("lblTotals", {}, this);

    auto* const row = new QHBoxLayout(panelCommand);
    row->setContentsMargins({});
    row->addWidget(cmdCopyLog);
    row->addWidget(cmdSaveReport);
    row->addStretch();
    row->addWidget(cmdClose);
    row->addWidget(cmdOK);
}

void frmProcessingDocuments::ConnectHandlers()
{
    using Form = frmProcessingDocuments;
    connect(SSTab1, &QTabWidget::currentChanged, this, &Form::SSTab1_Click);
    connect(pgbar1, &QProgressBar::valueChanged, this, [this](int steps) {
        // After a run the bar may still move to its last steps, when the taskbar shows no share any more.
        if (IsRunGoing)
            ShowTaskbarProgress(static_cast<double>(steps) / pgbar1->maximum());
    });
    connect(cmdOK, &QPushButton::clicked, this, &Form::cmdOK_Click);
    connect(cmdCopyLog, &QPushButton::clicked, this, &Form::cmdCopyLog_Click);
    connect(cmdSaveReport, &QPushButton::clicked, this, &Form::cmdSaveReport_Click);
    connect(cmdGiveUp, &QPushButton::clicked, this, &Form::cmdGiveUp_Click);
    connect(cmdClose, &QPushButton::clicked, this, &Form::close);
    connect(cmdFailures, &QPushButton::clicked, this, &Form::cmdFailures_Click);
    connect(cmdErrorLog, &QPushButton::clicked, this, &Form::cmdErrorLog_Click);
    for (int index = 0; index < static_cast<int>(cmdCommand.size()); ++index)
        connect(cmdCommand[static_cast<std::size_t>(index)], &QPushButton::clicked, this,
                [this, index] { cmdCommand_Click(index); });

    connect(trvChangedFiles, &ResultTree::MouseMove, this, &Form::trvChangedFiles_MouseMove);
    connect(trvChangedFiles, &ResultTree::DblClick, this, &Form::trvChangedFiles_DblClick);
    connect(trvNotChangedFiles, &ResultTree::MouseMove, this, &Form::trvNotChangedFiles_MouseMove);
    connect(trvNotChangedFiles, &ResultTree::DblClick, this, &Form::trvNotChangedFiles_DblClick);
    connect(trvErrors, &ResultTree::MouseMove, this, &Form::trvErrors_MouseMove);
    connect(trvErrors, &ResultTree::DblClick, this, &Form::trvErrors_DblClick);
    for (const ResultTree* tree : Trees()) {
        connect(tree, &ResultTree::OpenRequested, this, &Form::OPenDocument);
        connect(tree, &ResultTree::CurrentChanged, this, &Form::ShowHits);
        connect(tree, &ResultTree::Added, this, &Form::ShowTotals);
    }
    connect(trvErrors, &ResultTree::Added, this, &Form::ShowErrorTree);
    for (const FilterBar* filter : filters) {
        connect(filter, &FilterBar::TextEdited, this, &Form::TakeFilterText);
        connect(filter, &FilterBar::OnlyWithHitsChanged, this, &Form::ApplyFilter);
    }
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, &Form::FocusFilter);
    connect(&filterTimer_, &QTimer::timeout, this, &Form::ApplyFilter);
    connect(&totalsTimer_, &QTimer::timeout, this, [this] {
        if (areTotalsOld_)
            ShowTotalsNow();
    });
    connect(panelHits, &HitsPane::OpenRequested, this, &Form::lstHits_DblClick);
    connect(lstFailures, &FailureList::OpenRequested, this, &Form::lstFailures_DblClick);
    connect(lstFailures, &FailureList::OpenFolderRequested, this, &Form::lstFailures_OpenFolder);
    connect(lstFailures, &FailureList::FileChosen, this, &Form::lstFailures_FileChosen);
}

}  // namespace tessarine
