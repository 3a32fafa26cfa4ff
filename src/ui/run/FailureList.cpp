#include "ui/run/FailureList.h"

#include <algorithm>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

#include "i18n/QtText.h"
#include "report/WithoutPath.h"
#include "ui/run/NodeFilter.h"

namespace tessarine
{

namespace
{

enum FailureColumn { failedFileColumn, failureReasonColumn };

QAction* MakeFailureAction(const char* name, QWidget* owner)
{
    auto* const action = new QAction(owner);
    action->setObjectName(name);
    action->setShortcutContext(Qt::WidgetShortcut);
    owner->addAction(action);
    return action;
}

}  // namespace

FailureList::FailureList(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName("lstFailures");
    setColumnCount(2);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    // Of a path, the folder at the front and the name at the end can both be read.
    setTextElideMode(Qt::ElideMiddle);
    header()->setStretchLastSection(true);
    BuildMenu();
    connect(this, &QTreeWidget::itemDoubleClicked, mnuOpenFailed, &QAction::trigger);
    connect(this, &QTreeWidget::currentItemChanged, this, [this] {
        if (const String path = CurrentPath(); !path.empty())
            Q_EMIT FileChosen(path);
    });
}

void FailureList::BuildMenu()
{
    setContextMenuPolicy(Qt::ActionsContextMenu);
    mnuOpenFailed = MakeFailureAction("mnuOpenFailed", this);
    mnuOpenFailed->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    mnuOpenFolder = MakeFailureAction("mnuOpenFolder", this);
    mnuCopyFailure = MakeFailureAction("mnuCopyFailure", this);
    mnuCopyFailure->setShortcut(QKeySequence::Copy);
    connect(mnuOpenFailed, &QAction::triggered, this, [this] {
        if (const String path = CurrentPath(); !path.empty())
            Q_EMIT OpenRequested(path);
    });
    connect(mnuOpenFolder, &QAction::triggered, this, [this] {
        if (const String path = CurrentPath(); !path.empty())
            Q_EMIT OpenFolderRequested(path);
    });
    connect(mnuCopyFailure, &QAction::triggered, this, &FailureList::Copy);
}

void FailureList::Add(const String& path, const String& reason)
{
    const QString file = ToQt(path);
    // Trimmed: the reasons of some results begin with blanks.
    const QString text = ToQt(WithoutPath(reason, path)).simplified();
    auto* const line = new QTreeWidgetItem({file, text});
    line->setToolTip(failedFileColumn, file);
    line->setToolTip(failureReasonColumn, text);
    addTopLevelItem(line);
    line->setHidden(!NameMatches(file, filter_));
    widestReason_ = std::max(widestReason_, sizeHintForIndex(indexFromItem(line, failureReasonColumn)).width());
    ShareWidth();
}

int FailureList::ShownCount() const
{
    int count = 0;
    for (int at = 0; at < Count(); ++at)
        count += topLevelItem(at)->isHidden() ? 0 : 1;
    return count;
}

void FailureList::PutFilter(const QString& name)
{
    filter_ = name;
    for (int at = 0; at < Count(); ++at)
        topLevelItem(at)->setHidden(!NameMatches(topLevelItem(at)->text(failedFileColumn), filter_));
}

void FailureList::PutTexts(const RunTexts& texts)
{
    setHeaderLabels({texts(u"Failures.File"), texts(u"Failures.Reason")});
    setAccessibleName(texts(u"Failures.Name"));
    mnuOpenFailed->setText(texts(u"mnuOpenHit.caption"));
    mnuOpenFolder->setText(texts(u"mnuOpenFolder.caption"));
    mnuCopyFailure->setText(texts(u"mnuCopyNode.caption"));
}

void FailureList::resizeEvent(QResizeEvent* event)
{
    QTreeWidget::resizeEvent(event);
    ShareWidth();
}

/// The reasons say more than the paths, which are alike at their beginning: they are whole as far as a quarter of the
/// width is left for the paths.
void FailureList::ShareWidth()
{
    const int width = viewport()->width();
    setColumnWidth(failedFileColumn, std::clamp(width - widestReason_, width / 4, width * 2 / 5));
}

void FailureList::Copy() const
{
    if (const QTreeWidgetItem* const line = currentItem())
        QGuiApplication::clipboard()->setText(line->text(failedFileColumn) + '\t' + line->text(failureReasonColumn));
}

String FailureList::CurrentPath() const
{
    const QTreeWidgetItem* const line = currentItem();
    return line != nullptr ? FromQt(line->text(failedFileColumn)) : String();
}

}  // namespace tessarine
