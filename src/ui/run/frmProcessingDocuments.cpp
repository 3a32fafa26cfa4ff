#include "ui/run/frmProcessingDocuments.h"

#include <optional>
#include <string>

#include <QCloseEvent>
#include <QLabel>
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
#include "platform/Messages.h"
#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"
#include "ui/run/ElapsedTime.h"
#include "ui/run/FileMenu.h"
#include "ui/run/FileProgressBar.h"
#include "ui/run/FilterBar.h"
#include "ui/run/HitsPane.h"
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

/// A stored length, when it is one that a window can have.
std::optional<int> StoredLength(const String& key)
{
    bool isNumber = false;
    const int length = ToQt(GetSetting(String(ApplicationTitle), section, key)).toInt(&isNumber);
    return isNumber && length > 0 && length < QWIDGETSIZE_MAX ? std::optional(length) : std::nullopt;
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
    RestoreSize();
    Form_Load();
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
        NameControlsWithoutCaption();
        ShowFailures();
        // All tabs of the language in force can be seen without scrolling, with thousands of files in each.
        const int counts = 3 * fontMetrics().horizontalAdvance("(00000) ");
        setMinimumSize(QSize(SSTab1->tabBar()->sizeHint().width() + counts + 2 * fontMetrics().height(),
                             fontMetrics().height() * 26)
                           .expandedTo(layout()->totalMinimumSize()));
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
    DeliverPendingEvents();  // the last thing: the user may close the window in here
}

void frmProcessingDocuments::ShowElapsedTime()
{
    lblelapsedSecs->setText(ElapsedTimeText(StartTime, TimeOfDay()));
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
            Unload();
        else
            NotNull(CurrentProject)->IsProcessCancel = true;
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
    const auto width = StoredLength(u"Width");
    const auto height = StoredLength(u"Height");
    if (width && height)
        resize(*width, *height);
    else
        // Room for a tree above some hits, where the screen has as much.
        resize(QSize(fontMetrics().averageCharWidth() * 140, fontMetrics().height() * 46)
                   .boundedTo(screen()->availableSize() * 9 / 10));
    // In percent, so that it holds for any height.
    const int ofHits = StoredLength(u"HitsShare").value_or(45);
    if (ofHits < 100)
        splHits->setSizes({(100 - ofHits) * 100, ofHits * 100});
}

void frmProcessingDocuments::KeepSize() const
{
    // A size that fills the screen would come back as one that the user had drawn.
    if (isMaximized() || isFullScreen())
        return;
    // A size that can't be kept is not worth a word.
    Skip([this] {
        SaveSetting(String(ApplicationTitle), section, u"Width", FromQt(QString::number(width())));
        SaveSetting(String(ApplicationTitle), section, u"Height", FromQt(QString::number(height())));
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
    // Once for each file, although a run may tell of several failures at one.
    if (!notOpened_.insert(path).second)
        return;
    WriteErrorLog(u"Error " + FromUtf8(std::to_string(failure.number)) + u" (" + failure.description + u") in file " +
                  path);
    hits_.Add(FailedFile(path, failure.Reason()));
    ShowFailures();
}

void frmProcessingDocuments::TellRunFailed()
{
    hasRunFailed_ = true;
    ShowFailures();
}

void frmProcessingDocuments::ForgetFailures()
{
    notOpened_.clear();
    hasRunFailed_ = false;
    ShowFailures();
}

void frmProcessingDocuments::ShowFailures()
{
    lblNotOpened->setText(
        TextOf(u"lblNotOpened.caption").replace(QLatin1String("%d"), QString::number(notOpened_.size())));
    lblNotOpened->setVisible(!notOpened_.empty());
    lblRunFailed->setVisible(hasRunFailed_);
    panelFailures->setVisible(!notOpened_.empty() || hasRunFailed_);
}

}  // namespace tessarine
