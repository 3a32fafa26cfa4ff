#include <QDir>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QRadioButton>
#include <QTabWidget>
#include <QUrl>

#include "i18n/QtText.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/FindAndReplaceItems.h"
#include "model/KeepFailure.h"
#include "platform/PathSeparator.h"
#include "run/DroppedFiles.h"
#include "ui/main/EntryBox.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/MainTab.h"
#include "ui/main/NoticeStrip.h"
#include "ui/main/NoticeTexts.h"

// Files and folders that are dropped on the window: each goes where a click would have led to it.

namespace tessarine
{

namespace
{

/// The paths of what is dropped; none when any of it is not on this system's disks.
std::vector<String> PathsIn(const QMimeData& data)
{
    std::vector<String> paths;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile())
            return {};
        String path = FromQt(QDir::toNativeSeparators(url.toLocalFile()));
        // A folder may come with a separator at its end.
        paths.emplace_back(path.size() > 1 && path.back() == PathSeparator ? path.substr(0, path.size() - 1) : path);
    }
    return paths;
}

}  // namespace

void frmMain::dragEnterEvent(QDragEnterEvent* event)
{
    // Files of any kind, as a notice tells which can be used. Nothing may change the job that a run goes by.
    if (!event->mimeData()->hasUrls() || runWatch_.IsRunGoing())
        return;
    // Never a move, after which the other program would delete the files.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void frmMain::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QWidget* const under = childAt(event->position().toPoint());
    LogAndReturn({u"Form_Drop", place}, [&] { Take(PathsIn(*event->mimeData()), under); });
}

void frmMain::Take(const std::vector<String>& paths, const QWidget* under)
{
    grdItems->EndEdit();
    const DropKind kind = KindOfDrop(paths);
    if (kind == DropKind::Unknown) {
        fraNotice->Tell(NoticeCause::Drop, false, [] { return NoticeText(u"CantTake"); });
        return;
    }
    fraNotice->Over(NoticeCause::Drop);
    switch (kind) {
        case DropKind::Folder:
            TakeFolder(paths.front());
            break;
        case DropKind::Presentations:
            TakePresentations(paths);
            break;
        case DropKind::FileList:
            TakeFileList(paths.front());
            break;
        case DropKind::PairList:
            TakePairList(paths.front(), under);
            break;
        case DropKind::Project:
            TakeProject(paths.front());
            break;
        case DropKind::Unknown:
            break;
    }
}

void frmMain::TakeFolder(const String& path)
{
    // As the dialog for the folder leaves it.
    txtStartFolder->setText(ToQt(path.ends_with(PathSeparator) ? path : path + PathSeparator));
    optFileProcess[0]->setChecked(true);
    SSTab1->setCurrentIndex(MainTab::Files);
}

void frmMain::TakeFileList(const String& path)
{
    txtGetFileName->setText(ToQt(path));
    optFileProcess[1]->setChecked(true);
    SSTab1->setCurrentIndex(MainTab::Files);
}

/// Exactly these, and not the others of their folder: a job holds several files as a list of them.
void frmMain::TakePresentations(const std::vector<String>& paths)
{
    std::optional<Failure> failure;
    LogAndReturn({u"TakePresentations", place}, [&] {
        KeepFailure(failure,
                    [&] { TakeFileList(FileListOf(paths, ApplicationDataFolder + PathSeparator + u"Dropped files")); });
    });
    if (failure)
        fraNotice->Tell(NoticeCause::Drop, true, [reason = *failure] {
            return NoticeText(u"DropNotKept", {.s = ReasonOf(reason, ApplicationDataFolder)});
        });
}

/// For the box that names a list, or into the list itself: by where it was dropped, or else by what is chosen.
void frmMain::TakePairList(const String& path, const QWidget* under)
{
    const auto isIn = [under](const QWidget* part) { return under == part || part->isAncestorOf(under); };
    const bool isForBox = isIn(optLoad[0]) || isIn(picBrowse1);
    const bool isForGrid = isIn(optLoad[1]) || isIn(grdItems->parentWidget());
    SSTab1->setCurrentIndex(MainTab::Replacement);
    if (isForBox || (!isForGrid && optLoad[0]->isChecked())) {
        txtLoadsearch->setText(ToQt(path));
        optLoad[0]->setChecked(true);
    } else if (ImportFrom(path)) {
        optLoad[1]->setChecked(true);
    }
}

void frmMain::TakeProject(const String& path)
{
    bool isToStay = false;
    if (isModifed_)
        AskAndSave(isToStay);
    if (!isToStay)
        OpenProject(path);
}

}  // namespace tessarine
