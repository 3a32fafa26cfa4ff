#include "ui/run/FileMenu.h"

#include <QAction>
#include <QTreeView>

#include "app/LanguageText.h"
#include "i18n/QtText.h"

namespace tessarine
{

namespace
{

QAction* NewMenuItem(QObject* menu, const char* name)
{
    auto* const item = new QAction(menu);
    item->setObjectName(name);
    return item;
}

QAction* NewMenuGap(QObject* menu)
{
    auto* const gap = new QAction(menu);
    gap->setSeparator(true);
    return gap;
}

}  // namespace

FileMenu::FileMenu(QObject* parent)
    : QObject(parent),
      mnuOpenFile(NewMenuItem(this, "mnuOpenFile")),
      mnuOpenFolder(NewMenuItem(this, "mnuOpenFolder")),
      mnuCopyPath(NewMenuItem(this, "mnuCopyPath")),
      mnuRestoreFile(NewMenuItem(this, "mnuRestoreFile")),
      mnuRemoveBackup(NewMenuItem(this, "mnuRemoveBackup")),
      mnuRestoreAll(NewMenuItem(this, "mnuRestoreAll")),
      mnuRemoveAllBackups(NewMenuItem(this, "mnuRemoveAllBackups"))
{
}

void FileMenu::AddTo(QTreeView& tree)
{
    const QList<QAction*> ofTree = tree.actions();
    QAction* const first = ofTree.isEmpty() ? nullptr : ofTree.first();
    for (QAction* item : OfFile())
        tree.insertAction(first, item);
    tree.insertAction(first, NewMenuGap(&tree));
    tree.addAction(NewMenuGap(&tree));
    for (QAction* item : OfBackup())
        tree.addAction(item);
    tree.addAction(NewMenuGap(&tree));
    for (QAction* item : OfAllBackups())
        tree.addAction(item);
}

void FileMenu::PutCaptions()
{
    for (QAction* item : findChildren<QAction*>(Qt::FindDirectChildrenOnly))
        item->setText(ToQt(GetLngString(u"frmProcessingDocuments", FromQt(item->objectName()) + u".caption")));
}

void FileMenu::Put(const Offer& offer)
{
    for (QAction* item : OfFile())
        item->setEnabled(offer.file);
    for (QAction* item : OfBackup())
        item->setEnabled(offer.backup);
    for (QAction* item : OfAllBackups())
        item->setEnabled(offer.anyBackup);
}

}  // namespace tessarine
