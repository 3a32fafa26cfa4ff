#include "ui/run/frmProcessingDocuments.h"

#include <algorithm>
#include <optional>
#include <string>

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "i18n/LanguageOfControls.h"
#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "platform/GivingUp.h"
#include "platform/Messages.h"
#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"
#include "shell/WindowPlace.h"
#include "ui/run/ElapsedTime.h"
#include "ui/run/FailureList.h"
#include "ui/run/FileMenu.h"
#include "ui/run/FileProgressBar.h"
#include "ui/run/FilterBar.h"
#include "ui/run/HitsPane.h"
#include "ui/run/RemainingTime.h"
#include "ui/run/ResultTree.h"

namespace tessarine
{

namespace
{

const String section = u"frmProcessingDocuments";

/// The one window, as long as it is loaded. Its owner may take it along.
QPointer<frmProcessingDocuments>& LoadedWindow()
{
    static QPointer<frmProcessingDocuments> window;
    return window;
}

QString TextOf(const String& key)
{
    return ToQt(GetLngString(section, key));
}

/// A stored percentage, when it is one.
std::optional<int> StoredShare(const String& key)
{
    bool isNumber = false;
    const int share = ToQt(GetSetting(String(ApplicationTitle), section, key)).toInt(&isNumber);
    return isNumber && share > 0 && share < 100 ? std::optional(share) : std::nullopt;
}

/// Enter in these has a meaning of its own, or none.
bool TakesEnter(const QWidget* control)
{
    return qobject_cast<const QLineEdit*>(control) != nullptr ||
           qobject_cast<const QAbstractItemView*>(control) != nullptr;
}

}  // namespace

frmProcessingDocuments& frmProcessingDocuments::Instance(QWidget* owner)
{
    if (LoadedWindow().isNull())
        LoadedWindow() = new frmProcessingDocuments(owner);
    return *LoadedWindow();
}

frmProcessingDocuments* frmProcessingDocuments::Loaded()
{
    return LoadedWindow().data();
}

frmProcessingDocuments::frmProcessingDocuments(QWidget* owner)
    : QWidget(owner, Qt::Window),
      trvChangedFiles(new ResultTree("trvChangedFiles", this)),
      trvNotChangedFiles(new ResultTree("trvNotChangedFiles", this)),
      trvErrors(new ResultTree("trvErrors", this))
{
    setObjectName("frmProcessingDocuments");
    setAttribute(Qt::WA_DeleteOnClose);
    filterTimer_.setSingleShot(true);
    totalsTimer_.setSingleShot(true);
    BuildControls();
    ConnectHandlers();
    Form_Load();
    RestoreSize();  // which goes by the smallest size, and that by the language
}

frmProcessingDocuments::~frmProcessingDocuments() = default;

void frmProcessingDocuments::Form_Load()
{
    LogAndReturn({u"Form_Load", place}, [this] {
        StartTime = TimeOfDay();
        SSTab1->setCurrentIndex(1);  // a run moves to the progress
        SSTab1_Click();
        LoadLng();
        ShowElapsedTime();
        tmrelapsedSecsX = std::make_unique<TimerX>();
        tmrelapsedSecsX->Timer += [this] { tmrelapsedSecsX_Timer(); };
        // Milliseconds. The system's timer takes its shortest interval for it, and the clock never stands still for a
        // second.
        tmrelapsedSecsX->Interval = 1;
        tmrelapsedSecsX->PutEnabled(true);
    });
}

void frmProcessingDocuments::LoadLng()
{
    LogAndReturn({u"LoadLng", place}, [this] {
        ApplyLanguage(*this, section, ControlTips::Basic);
        // The first tab has the same caption in both kinds of run, the others have one for each.
        SSTab1->setTabText(0, TextOf(u"SSTab1.TabCaption(0)"));
        const String caption = IsSearchRun ? u"SSTab1.TabCaption1(" : u"SSTab1.TabCaption(";
        for (int tab = 1; tab < SSTab1->count(); ++tab)
            SSTab1->setTabText(tab, TextOf(caption + FromUtf8(std::to_string(tab)) + u")"));
        for (ResultTree* tree : {trvChangedFiles, trvNotChangedFiles, trvErrors})
            tree->PutMenuCaptions(TextOf(u"mnuCopyNode.caption"), TextOf(u"mnuExpandAll.caption"),
                                  TextOf(u"mnuCollapseAll.caption"));
        fileMenu_->PutCaptions();
        texts_ = {};
        for (FilterBar* filter : filters)
            filter->PutTexts(texts_);
        panelHits->PutTexts(texts_);
        lstFailures->PutTexts(texts_);
        NameControlsWithoutCaption();
        ShowFailures();
        // Tabs without room are cut, with their names at the pointer; the screen bounds all the rest.
        for (int tab = 0; tab < SSTab1->count(); ++tab)
            SSTab1->setTabToolTip(tab, SSTab1->tabText(tab).remove(u'&'));
        int width = 0;
        for (const QWidget* panel : panels) {
            panel->layout()->activate();  // or rows in it would still have the size of the captions before
            width = std::max(width, panel->layout()->totalMinimumSize().width());
        }
        setMinimumSize(FittingSize(*this, QSize(width + 4 * fontMetrics().height(), fontMetrics().height() * 26)
                                              .expandedTo(layout()->totalMinimumSize())));
    });
}

/// For those who hear the window instead of seeing it: a tree speaks by its tab.
void frmProcessingDocuments::NameControlsWithoutCaption()
{
    SSTab1->setAccessibleName(TextOf(u"Tabs.Name"));
    pgbar1->setAccessibleName(TextOf(u"pgbar1.Name"));
    imgWarning->setAccessibleName(TextOf(u"panelWarning.Name"));
    const std::array<ResultTree*, 3> trees{trvChangedFiles, trvNotChangedFiles, trvErrors};
    for (std::size_t i = 0; i < trees.size(); ++i)
        trees[i]->setAccessibleName(SSTab1->tabText(static_cast<int>(i) + 1).remove(u'&'));
}

void frmProcessingDocuments::UpdateSecs()
{
    LogAndReturn({u"UpdateSecs", place}, [this] {
        ShowElapsedTime();
        DeliverPendingEvents();
    });
}

void frmProcessingDocuments::tmrelapsedSecsX_Timer()
{
    ShowElapsedTime();
    ShowTimeOfFile();
    DeliverPendingEvents();  // the last thing: the user may close the window in here
}

void frmProcessingDocuments::ShowElapsedTime()
{
    const QTime now = TimeOfDay();
    lblelapsedSecs->setText(ElapsedTimeText(StartTime, now));
    ShowTimeLeft(SecondsBetween(StartTime, now));
}

void frmProcessingDocuments::ShowTimeLeft(int secondsGone)
{
    const auto left = IsRunGoing ? SecondsLeft(pgbar1->Steps(), pgbar1->maximum(), secondsGone) : std::nullopt;
    lblRemaining->setText(left ? texts_.Filled(u"Remaining.Time", {.s = TimeText(*left)}) : QString());
    lblRemaining->setVisible(left.has_value());
}

void frmProcessingDocuments::SSTab1_Click()
{
    LogAndReturn({u"SSTab1_Click", place}, [this] {
        for (std::size_t tab = 0; tab < panels.size(); ++tab)
            panels[tab]->setVisible(SSTab1->currentIndex() == static_cast<int>(tab));
        ShowHits();
    });
}

void frmProcessingDocuments::cmdOK_Click()
{
    LogAndReturn({u"cmdOK_Click", place}, [this] {
        // One button, two meanings: until the run has ended it cancels.
        if (IsComplited)
            return Unload();
        NotNull(CurrentProject)->IsProcessCancel = true;
        // The file in hand is finished first, which may take a while.
        lblStopping->setVisible(IsRunGoing && !IsComplited);
    });
}

void frmProcessingDocuments::closeEvent(QCloseEvent* event)
{
    // A window that was loaded without a run has nothing to cancel.
    const bool mayClose = IsComplited || !IsRunGoing;
    event->setAccepted(mayClose);
    if (mayClose)
        Unload();
    else
        cmdOK_Click();
}

void frmProcessingDocuments::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool closes = event->key() == Qt::Key_Escape || (isEnter && !TakesEnter(focusWidget()));
    // During a run a key pressed by mistake must not end it.
    if (closes && !IsRunGoing)
        close();
    else
        QWidget::keyPressEvent(event);
}

/// Forgets the window at once, so that the next use loads another; it goes away when the events on their way to it
/// have come.
void frmProcessingDocuments::Unload()
{
    // close() at the end comes back here through closeEvent; by then the window is no longer the loaded one.
    if (Loaded() != this)
        return;
    LoadedWindow().clear();
    KeepSize();
    if (tmrelapsedSecsX)
        tmrelapsedSecsX->PutEnabled(false);
    close();
}

void frmProcessingDocuments::RestoreSize()
{
    // Room for a tree above some hits, over the owner; unless a place is kept.
    const QSize wanted(fontMetrics().averageCharWidth() * 140, fontMetrics().height() * 46);
    resize(FittingSize(*this, wanted.expandedTo(minimumSize())));
    if (parentWidget() != nullptr) {
        QRect room = parentWidget()->screen()->availableGeometry();
        room.setHeight(room.height() - FrameSize(*this).height());  // its buttons are at the lower edge
        move(PlaceOver(parentWidget()->frameGeometry(), size(), room));
    }
    RestorePlace(*this, section);
    // In percent, so that it holds for any height.
    const int ofHits = StoredShare(u"HitsShare").value_or(45);
    splHits->setSizes({(100 - ofHits) * 100, ofHits * 100});
}

void frmProcessingDocuments::KeepSize() const
{
    KeepPlace(*this, section);
    // A share that can't be kept is not worth a word.
    Skip([this] {
        const QList<int> sizes = splHits->sizes();
        // The pane has no height while it is hidden.
        if (sizes[0] > 0 && sizes[1] > 0)
            SaveSetting(String(ApplicationTitle), section, u"HitsShare",
                        FromQt(QString::number(100 * sizes[1] / (sizes[0] + sizes[1]))));
    });
}

void frmProcessingDocuments::SetProgressRange(std::int32_t maximum)
{
    pgbar1->Begin(maximum);
}

void frmProcessingDocuments::AddProgressStep()
{
    pgbar1->AddStep();
}

void frmProcessingDocuments::FillProgress()
{
    pgbar1->Fill();
}

void frmProcessingDocuments::StopProgressAt(std::int32_t files)
{
    pgbar1->StopAt(files);
}

void frmProcessingDocuments::ShowProgressTab()
{
    SSTab1->setCurrentIndex(0);
}

void frmProcessingDocuments::SetDocChanged(const String& text)
{
    lblDocChanged->setText(ToQt(text));
}

void frmProcessingDocuments::SetChangesMade(const String& text)
{
    lblChangesMade->setText(ToQt(text));
}

void frmProcessingDocuments::SetOKCaption(const String& text)
{
    cmdOK->setText(ToQt(text));
}

ResultTree* frmProcessingDocuments::TreeOf(const std::shared_ptr<CounterStatuses>& vStatus) const
{
    switch (NotNull(vStatus)->FileStausAfterProcess) {
        case FileStatus::Counted:
            return trvChangedFiles;
        case FileStatus::NothingCounted:
            return trvNotChangedFiles;
        case FileStatus::NotProcessed:
            return trvErrors;
        default:
            return nullptr;
    }
}

void frmProcessingDocuments::FileNotOpened(const String& path, const Failure& failure)
{
    TakeFailure(path, failure, notOpened_);
}

void frmProcessingDocuments::FileNotProcessed(const String& path, const Failure& failure)
{
    TakeFailure(path, failure, notProcessed_);
}

void frmProcessingDocuments::TakeFailure(const String& path, const Failure& failure, std::set<String>& files)
{
    // Once for each file, although a run may tell of several failures at one.
    if (!files.insert(path).second)
        return;
    WriteErrorLog(u"Error " + FromUtf8(std::to_string(failure.number)) + u" (" + failure.description + u") in file " +
                  path);
    hits_.Add(FailedFile(path, failure.Reason()));
    ListFailure(path, failure.Reason());
}

void frmProcessingDocuments::ListFailure(const String& path, const String& reason)
{
    lstFailures->Add(path, reason);
    ShowFailures();
    ShowTotals();
}

int frmProcessingDocuments::FailureCount() const
{
    return lstFailures->Count();
}

void frmProcessingDocuments::TellRunFailed()
{
    hasRunFailed_ = true;
    ShowFailures();
}

void frmProcessingDocuments::ForgetFailures()
{
    notOpened_.clear();
    notProcessed_.clear();
    hasRunFailed_ = false;
    const bool areCounted = lstFailures->Count() > 0;
    lstFailures->clear();
    ShowFailures();
    if (areCounted)
        ShowTotals();
}

void frmProcessingDocuments::ShowFailures()
{
    const auto show = [](QLabel* label, const String& key, std::size_t count) {
        label->setText(TextOf(key).replace(QLatin1String("%d"), QString::number(count)));
        label->setVisible(count > 0);
    };
    const int failures = lstFailures->Count();
    show(lblFailures, u"lblFailures.caption", static_cast<std::size_t>(failures));
    show(lblNotOpened, u"lblNotOpened.caption", notOpened_.size());
    show(lblNotProcessed, u"lblNotProcessed.caption", notProcessed_.size());
    lblRunFailed->setVisible(hasRunFailed_);
    cmdFailures->setVisible(failures > 0);
    lstFailures->setVisible(failures > 0);
    ShowErrorTree();
    const bool isLogged = !notOpened_.empty() || !notProcessed_.empty() || hasRunFailed_;
    cmdErrorLog->setVisible(isLogged);
    panelFailures->setVisible(failures > 0 || isLogged);
}

/// An empty tree only takes room from the list of the failures.
void frmProcessingDocuments::ShowErrorTree()
{
    trvErrors->setVisible(lstFailures->Count() == 0 || trvErrors->Nodes().FileCount() > 0);
}

void frmProcessingDocuments::ShowBeginning()
{
    bool hasResults = false;
    for (const ResultTree* tree : Trees())
        hasResults = hasResults || tree->Nodes().FileCount() > 0;
    lblAdded->setVisible(hasResults);
    ForgetFailures();
    panelOutcome->hide();
    panelWarning->show();
    panelStuck->hide();
    lblStopping->hide();
    cmdClose->hide();
    StartTime = TimeOfDay();
    ShowElapsedTime();
    tmrelapsedSecsX->PutEnabled(true);
}

void frmProcessingDocuments::ShowEnd(const String& outcome)
{
    lblOutcome->setText(ToQt(outcome));
    panelWarning->hide();
    panelOutcome->show();
    panelStuck->hide();
    lblStopping->hide();
    lblRemaining->clear();
    // OK closes the window only after a run that has come to its own end.
    cmdClose->setVisible(!IsComplited);
}

void frmProcessingDocuments::ShowFileBegins()
{
    fileBegan_ = TimeOfDay();
    secondsOfFile_ = 0;
    pairNumber_ = 0;
    cmdGiveUp->setEnabled(true);
    panelStuck->hide();
}

void frmProcessingDocuments::TellPair(std::int32_t number, const String& findWhat)
{
    pairNumber_ = number;
    pairText_ = findWhat;
}

void frmProcessingDocuments::ShowTimeOfFile()
{
    constexpr int longTime = 10;  // seconds
    if (!IsRunGoing || !fileBegan_.isValid())
        return;
    const int seconds = SecondsBetween(fileBegan_, TimeOfDay());
    if (seconds < longTime || seconds == secondsOfFile_)
        return;
    secondsOfFile_ = seconds;
    QString text = texts_.Filled(u"Stuck.File", {.s = TimeText(seconds)});
    if (pairNumber_ > 0)
        text += u' ' + texts_.Filled(u"Stuck.Pair", {.d = pairNumber_, .s = ToQt(pairText_)});
    lblStuck->setText(text);
    panelStuck->show();
}

void frmProcessingDocuments::cmdGiveUp_Click()
{
    LogAndReturn({u"cmdGiveUp_Click", place}, [this] {
        GiveUpFile();
        cmdGiveUp->setEnabled(false);
    });
}

}  // namespace tessarine
