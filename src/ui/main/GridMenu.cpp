#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QRadioButton>
#include <QTabWidget>

#include "app/LanguageText.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/MainTab.h"

// The commands of the grid that are in no menu of the window: its context menu, and their keys.

namespace tessarine
{

void frmMain::BuildGridMenu()
{
    mnuPairs = new QMenu(this);
    mnuPairs->setObjectName("mnuPairs");
    // A cell editor has the keys of its text first. "Everywhere" is the tab with the grid, which can't have the focus
    // while it is empty.
    enum class Keys { OfGrid, Everywhere, ShownAlone };
    const auto equip = [this](QAction* item, auto handler, const QList<QKeySequence>& keys, Keys where) {
        item->setShortcuts(keys);
        if (where == Keys::Everywhere) {
            item->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            SSTab1->addAction(item);
        } else {
            item->setShortcutContext(Qt::WidgetShortcut);
            if (where == Keys::OfGrid)
                grdItems->addAction(item);
        }
        connect(item, &QAction::triggered, this, [this, handler] {
            if (SSTab1->currentIndex() == MainTab::Replacement)
                (this->*handler)();
        });
    };
    const auto add = [&](const char* name, auto handler, const QList<QKeySequence>& keys, Keys where,
                         const char* icon = "") {
        QAction* const item = mnuPairs->addAction(QString());
        item->setObjectName(name);
        if (*icon != '\0')
            item->setIcon(Icon(icon));
        equip(item, handler, keys, where);
    };
    const QList<QKeySequence> redoKeys{Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z};
    add("mnuPairUndo", &frmMain::UndoListStep, {QKeySequence(Qt::CTRL | Qt::Key_Z)}, Keys::Everywhere);
    add("mnuPairRedo", &frmMain::RedoListStep, redoKeys, Keys::Everywhere);
    mnuPairs->addSeparator();
    add("mnuPairCut", &frmMain::CutPairs, QKeySequence::keyBindings(QKeySequence::Cut), Keys::OfGrid);
    add("mnuPairCopy", &frmMain::CopyPairs, QKeySequence::keyBindings(QKeySequence::Copy), Keys::OfGrid);
    add("mnuPairPaste", &frmMain::PastePairs, QKeySequence::keyBindings(QKeySequence::Paste), Keys::Everywhere);
    mnuPairs->addSeparator();
    // The handlers of the grid's own keys answer to Delete and Ctrl+A.
    add("mnuPairAdd", &frmMain::cmdAdd_Click, {}, Keys::ShownAlone, "add");
    add("mnuPairDelete", &frmMain::cmdDelete_Click, {QKeySequence(Qt::Key_Delete)}, Keys::ShownAlone, "delete");
    add("mnuPairSwap", &frmMain::cmdSwap_Click, {}, Keys::ShownAlone, "swap");
    mnuPairs->addSeparator();
    add("mnuPairUp", &frmMain::MovePairsUp, {QKeySequence(Qt::ALT | Qt::Key_Up)}, Keys::OfGrid);
    add("mnuPairDown", &frmMain::MovePairsDown, {QKeySequence(Qt::ALT | Qt::Key_Down)}, Keys::OfGrid);
    mnuPairs->addSeparator();
    add("mnuPairSelectAll", &frmMain::SelectAllPairs, {QKeySequence(Qt::CTRL | Qt::Key_A)}, Keys::ShownAlone);
    add("mnuPairFind", &frmMain::OpenFind, {QKeySequence(Qt::CTRL | Qt::Key_F)}, Keys::Everywhere, "search");
    // In no menu: the bar has buttons for them.
    equip(new QAction(this), &frmMain::FindNext, {QKeySequence(Qt::Key_F3)}, Keys::Everywhere);
    equip(new QAction(this), &frmMain::FindPrevious, {QKeySequence(Qt::SHIFT | Qt::Key_F3)}, Keys::Everywhere);

    // Between two openings all are enabled, so that a key reaches its handler, which looks for itself.
    connect(mnuPairs, &QMenu::aboutToShow, this, &frmMain::EnableGridMenu);
    connect(mnuPairs, &QMenu::aboutToHide, this, [this] {
        for (QAction* item : mnuPairs->actions())
            item->setEnabled(true);
    });
    for (QWidget* spot : {static_cast<QWidget*>(grdItems), grdItems->parentWidget()})
        spot->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(grdItems, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& spot) { mnuPairs->popup(grdItems->viewport()->mapToGlobal(spot)); });
    // A grid that is disabled, as an empty one is, leaves the click to the panel around it.
    QWidget* const panel = grdItems->parentWidget();
    connect(panel, &QWidget::customContextMenuRequested, this, [this, panel](const QPoint& spot) {
        if (grdItems->geometry().contains(spot))
            mnuPairs->popup(panel->mapToGlobal(spot));
    });
}

/// For the time that the menu is open.
void frmMain::EnableGridMenu()
{
    const bool isInternal = optLoad[1]->isChecked();
    const bool hasRows = grdItems->Rows() > 1;
    const bool hasSelection = isInternal && !grdItems->SelectedRows().empty();
    const auto enable = [this](const char* name, bool isEnabled) {
        mnuPairs->findChild<QAction*>(name)->setEnabled(isEnabled);
    };
    enable("mnuPairUndo", listHistory_.CanUndo());
    enable("mnuPairRedo", listHistory_.CanRedo());
    for (const char* name : {"mnuPairCut", "mnuPairCopy", "mnuPairDelete", "mnuPairSwap", "mnuPairUp", "mnuPairDown"})
        enable(name, hasSelection);
    enable("mnuPairPaste", isInternal && HasPairsToPaste());
    enable("mnuPairAdd", isInternal);
    enable("mnuPairSelectAll", isInternal && hasRows);
    enable("mnuPairFind", hasRows);
}

void frmMain::NameGridMenu()
{
    for (QAction* item : mnuPairs->actions())
        if (!item->isSeparator())
            item->setText(ToQt(GetLngString(u"frmMain", FromQt(item->objectName() + ".caption"))));
}

}  // namespace tessarine
