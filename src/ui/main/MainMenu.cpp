#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include "icons/Icons.h"
#include "shell/RecentFiles.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

namespace tessarine
{

namespace
{

QMenu* AddMenu(QMenu& menu, const char* name, const char* caption)
{
    QMenu* const sub = menu.addMenu(caption);
    sub->menuAction()->setObjectName(name);
    return sub;
}

QMenu* AddMenu(QMenuBar& bar, const char* name, const char* caption)
{
    QMenu* const menu = bar.addMenu(caption);
    menu->menuAction()->setObjectName(name);
    return menu;
}

void AddSeparator(QMenu& menu, const char* name)
{
    menu.addSeparator()->setObjectName(name);
}

}  // namespace

void frmMain::BuildMenu()
{
    const auto add = [this](QMenu* menu, const char* name, const char* caption, auto handler, const char* icon = "") {
        QAction* const item = menu->addAction(caption);
        item->setObjectName(name);
        if (*icon != '\0')
            item->setIcon(Icon(icon));
        connect(item, &QAction::triggered, this, [this] { grdItems->EndEdit(); });  // menus do not take the focus
        connect(item, &QAction::triggered, this, handler);
    };

    QMenu* const mnuFile = AddMenu(*menuBar(), "mnuFile", "&File");
    add(mnuFile, "mnuOpen", "&Open", &frmMain::mnuOpen_Click, "open");
    add(mnuFile, "menuSave", "&Save", &frmMain::menuSave_Click, "save");
    add(mnuFile, "menuSaveAs", "Save&As", &frmMain::menuSaveAs_Click);
    AddSeparator(*mnuFile, "mnuSep1");
    QMenu* const mnuRecent = AddMenu(*mnuFile, "mnuRecent", "&Recent Files");
    recentFiles_ = std::make_unique<RecentFiles>(*mnuRecent, [this](std::int32_t Index) { mnuDefRF_Click(Index); });
    AddSeparator(*mnuFile, "mnuSep2");
    add(mnuFile, "mnuExit", "&Exit", &frmMain::mnuExit_Click);

    QMenu* const menuOption = AddMenu(*menuBar(), "menuOption", "&Option");
    add(menuOption, "mnuChangeLanguage", "&Change Language...", &frmMain::mnuChangeLanguage_Click);
    AddSeparator(*menuOption, "mnuSep5");
    add(
        menuOption, "mnuStartSearching", "Start &Searching", [this] { cmdStartReplacing_Click(1); }, "search");
    add(
        menuOption, "mnuStartReplacing", "Start &Replacing", [this] { cmdStartReplacing_Click(0); }, "replace");
    AddSeparator(*menuOption, "mnuSep3");
    add(menuOption, "mnuImportList", "&Import search/replace list", &frmMain::mnuImportList_Click);
    add(menuOption, "mnuExportList", "&Export search/replace list", &frmMain::mnuExportList_Click);

    QMenu* const mnuHelp = AddMenu(*menuBar(), "mnuHelp", "&Help");
    add(mnuHelp, "mnuHelp1", "&Help", &frmMain::mnuHelp1_Click, "help");
    add(mnuHelp, "mnuHomePage", "&Visit Our Website", &frmMain::mnuHomePage_Click);
    add(mnuHelp, "mnuAbout", "&About", &frmMain::mnuAbout_Click);
}

void frmMain::BuildToolbar()
{
    Toolbar1 = new QToolBar(this);
    Toolbar1->setObjectName("Toolbar1");
    Toolbar1->setMovable(false);
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);  // it would offer to hide the tool bar for good
    const auto add = [this](const char* icon, int index) {
        connect(Toolbar1->addAction(Icon(icon), QString()), &QAction::triggered, this, [this, index] {
            grdItems->EndEdit();  // tool buttons do not take the focus either
            Toolbar1_ButtonClick(index);
        });
    };
    // The numbers count the separator.
    add("open", 1);
    add("save", 2);
    Toolbar1->addSeparator();
    add("help", 4);
    addToolBar(Toolbar1);

    statusBar()->setObjectName("StatusBar1");
    lblEngine = new QLabel;
    lblEngine->setObjectName("lblEngine");
    statusBar()->addPermanentWidget(lblEngine);
}

}  // namespace tessarine
