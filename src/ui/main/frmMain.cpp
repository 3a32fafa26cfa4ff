#include "ui/main/frmMain.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolBar>

#include "app/GlobalState.h"
#include "app/LanguageText.h"
#include "app/Main.h"
#include "app/WindowTitle.h"
#include "i18n/frmChangeLanguage.h"
#include "i18n/LanguageOfControls.h"
#include "i18n/QtText.h"
#include "icons/Icons.h"
#include "log/Treatments.h"
#include "platform/FolderOf.h"
#include "platform/Messages.h"
#include "shell/RecentFiles.h"
#include "shell/WindowPlace.h"
#include "ui/main/EndlessNotice.h"
#include "ui/main/EntryBox.h"
#include "ui/main/FileCounter.h"
#include "ui/main/FindBar.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/NoticeStrip.h"

namespace tessarine
{

namespace
{

/// The file's name without its folder, and without every ".tsq" in small letters.
String TitleOf(const String& path)
{
    const String trimmed = Trim(path);
    if (trimmed.empty())
        return u"untitled";
    const QString name = ToQt(FileNameOf(trimmed));
    // Intended: ".TSQ" stays, so that "job.tsq" and "job.TSQ" in one folder have different titles.
    return FromQt(QString(name).remove(QStringLiteral(".tsq")));
}

}  // namespace

String GlobalMsg(const String& key)
{
    return GetLngString(u"Global Msg", key);
}

String GlobalMsg(const String& key, std::int32_t number)
{
    return GetLngString(u"Global Msg", key, number);
}

frmMain::frmMain(QWidget* parent) : QMainWindow(parent)
{
    setObjectName("frmMain");
    // All controls first; then the tab order and the handlers, which need them; last the job, whose values the handlers
    // answer to.
    BuildMenu();
    BuildToolbar();
    BuildTabs();
    BuildStartButtons();
    SetTabOrder();
    ConnectHandlers();
    ConnectGrid();
    fileCounter_ = new FileCounter(this);
    ConnectFileCount();
    setAcceptDrops(true);
    RestorePlace(*this, u"frmMain");
    BuildGridMenu();
    Form_Load();
}

frmMain::~frmMain() = default;

void frmMain::Form_Load()
{
    LogAndReturn({u"Form_Load", place}, [this] {
        // Both buttons are chosen from the start, so they tell of no change; the handlers grey what belongs to the
        // other choice.
        optFileProcess_Click(0);
        optLoad_Click(0);
        LoadProjectOnForm();
        mProject = CurrentProject;
        ReceiveEvents();
        recentFiles_->MRUCount = 0;
        recentFiles_->GetMRUFileList();
        SSTab1->setCurrentIndex(0);
        // Filling the form has marked the job.
        PutIsModifed(false);
        LoadLng();
        PutProjectFile({});  // the default project does not count as an open file
        grdItems->SetStartWidths();
        NoteStart();
    });
}

void frmMain::PutIsModifed(bool value)
{
    isModifed_ = value;
    isMarkedBesidesList_ = value;
    if (!value)
        listHistory_.SetSaved();
    BuildTitle();
}

void frmMain::PutProjectFile(const String& value)
{
    projectFile_ = value;
    BuildTitle();
}

void frmMain::BuildTitle()
{
    // Qt takes "[*]" for the place of a mark of its own; written twice it is the three characters of a file's name.
    setWindowTitle(ToQt(BuildWindowTitle(TitleOf(projectFile_), isModifed_)).replace("[*]", "[*][*]"));
}

void frmMain::LoadLng()
{
    LogAndReturn({u"LoadLng", place}, [this] {
        const String section = u"frmMain";
        ApplyLanguage(*this, section, ControlTips::TextAndListBoxes);
        for (int tab = 0; tab < SSTab1->count(); ++tab)
            SSTab1->setTabText(tab,
                               ToQt(GetLngString(section, FromQt(QStringLiteral("SSTab1.TabCaption(%1)").arg(tab)))));
        for (int column = 0; column < ItemColumn::Count; ++column)
            grdItems->Items().SetHead(
                column, ToQt(GetLngString(section, FromQt(QStringLiteral("vsflex.TextMatrix(0,%1)").arg(column)))));
        grdItems->Items().SetEndlessTip(ToQt(GetLngString(section, u"grdItems.EndlessTip")));
        lblEndless->PutTexts(ToQt(GetLngString(section, u"Endless.Pairs")),
                             ToQt(GetLngString(section, u"Endless.Pair")));
        grdItems->SetEmptyTexts(ToQt(GetLngString(section, u"grdItems.EmptyText")),
                                TextNamingChoice(u"grdItems.FileText"));
        TellListUse();
        lblEngine->setText(ToQt(GetLngString(u"Global Msg", IsBuiltInEngine ? u"1062" : u"1061")));
        NameGridMenu();
        findBar_->PutPlaceholder(ToQt(GetLngString(section, u"txtFindPair.EmptyText")));
        NameControlsWithoutCaption();
        fraNotice->Reword();
        if (wordFileCount_)
            WordFileCount();
    });
}

/// For those who hear the window instead of seeing it: a control without a caption speaks by its label or its tip.
void frmMain::NameControlsWithoutCaption()
{
    const auto plain = [](QString caption) { return caption.remove(u'&'); };
    for (QAction* button : Toolbar1->actions()) {
        button->setText({});  // it would stand in for an empty tip
        button->setText(button->toolTip());
    }
    for (const QLabel* label : findChildren<QLabel*>())
        if (label->window() == this && label->buddy() != nullptr)
            label->buddy()->setAccessibleName(plain(label->text()));
    for (QPushButton* browse : {cmdBrowse1, cmdBrowse2, cmdBrowse3})
        browse->setAccessibleName(browse->toolTip());
    txtLoadsearch->setAccessibleName(plain(optLoad[0]->text()));
    grdItems->setAccessibleName(plain(optLoad[1]->text()));
    txtGetFileName->setAccessibleName(plain(optFileProcess[1]->text()));
    cboversion->lineEdit()->setAccessibleName(cboversion->accessibleName());
    SSTab1->setAccessibleName(ToQt(GetLngString(u"frmMain", u"Tabs.Name")));
}

void frmMain::closeEvent(QCloseEvent* event)
{
    grdItems->EndEdit();  // which may mark the job
    bool Cancel = false;
    Form_QueryUnload(Cancel);
    event->setAccepted(!Cancel);
    if (Cancel)
        return;
    KeepPlace(*this, u"frmMain");
    isClosed_ = true;
    // A run in progress goes on, and the program ends with it (see Run).
    if (!runWatch_.IsRunGoing())
        Unloaded.Raise();
}

void frmMain::Form_QueryUnload(bool& Cancel)
{
    LogAndReturn({u"Form_QueryUnload", place}, [&] {
        FillProjectObject();
        // Before the question and whatever its answer: the next start begins with the form as it stands now.
        String path = DefaultProjectPath();
        NotNull(CurrentProject)->SaveAsProject(path, true);
        NoteDefaultProject();
        if (isModifed_)
            AskAndSave(Cancel);
    });
}

void frmMain::AskAndSave(bool& Cancel)
{
    const MessageAnswer answer = ShowMessage(GlobalMsg(u"1048"), MessageIcon::None, MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel)
        Cancel = true;
    if (answer != MessageAnswer::Yes)
        return;
    if (projectFile_.empty())
        menuSaveAs_Click();
    else
        menuSave_Click();
    Cancel = isModifed_;  // the user has left the dialog without a name, or the job could not be saved
}

}  // namespace tessarine
