#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QTabWidget>

#include "app/LanguageText.h"
#include "i18n/FilledText.h"
#include "i18n/QtText.h"
#include "log/Treatments.h"
#include "ui/main/EntryBox.h"
#include "ui/main/FileCounter.h"
#include "ui/main/frmMain.h"
#include "ui/main/MainTab.h"

// How many presentations the choice on the second tab holds, counted beside the window while that tab is in front.

namespace tessarine
{

namespace
{

QString CountText(const String& key, const TextValues& values = {})
{
    return FilledText(ToQt(GetLngString(u"frmMain", u"lblFileCount." + key)), values);
}

QString TotalsText(const FileTotals& totals, bool isListed)
{
    if (!totals.isThere)
        return ToQt(GlobalMsg(isListed ? u"1050" : u"1047"));
    QString text = CountText(u"Totals", {.d = totals.files, .i = QString::number(totals.readOnly)});
    if (totals.unreadFolders > 0)
        text += u' ' + CountText(u"Unread", {.d = totals.unreadFolders});
    if (totals.hiddenByLineFeeds > 0)
        text += u' ' + ToQt(GlobalMsg(u"List.LineFeeds"));
    return text;
}

}  // namespace

void frmMain::CountFiles()
{
    LogAndReturn({u"CountFiles", place}, [this] {
        const bool isListed = optFileProcess[1]->isChecked();
        const FileChoice choice{.isListed = isListed,
                                .folder = FromQt(txtStartFolder->text()),
                                .withSubfolders = chkIncludesubfolders->isChecked(),
                                .list = FromQt(txtGetFileName->text()),
                                .patterns = FromQt(cboSpreadsheetType->currentText())};
        const bool isInSight = SSTab1->currentIndex() == MainTab::Files;
        if (isInSight && !runWatch_.IsRunGoing() && !(isListed ? choice.list : choice.folder).empty())
            fileCounter_->Count(choice);
        else
            fileCounter_->Cancel();
        // What was counted is not what is chosen any more.
        wordFileCount_ = {};
        WordFileCount();
    });
}

void frmMain::ConnectFileCount()
{
    for (EntryBox* box : {txtStartFolder, txtGetFileName})
        connect(box, &EntryBox::textChanged, this, &frmMain::CountFiles);
    connect(chkIncludesubfolders, &QCheckBox::stateChanged, this, &frmMain::CountFiles);
    connect(cboSpreadsheetType, &QComboBox::currentIndexChanged, this, &frmMain::CountFiles);
    connect(optFileProcess[1], &QRadioButton::toggled, this, &frmMain::CountFiles);
    connect(SSTab1, &QTabWidget::currentChanged, this, &frmMain::CountFiles);
    connect(fileCounter_, &FileCounter::Begun, this, [this] {
        wordFileCount_ = [] { return CountText(u"Counting"); };
        WordFileCount();
    });
    connect(fileCounter_, &FileCounter::Counted, this, [this](const FileTotals& totals) {
        wordFileCount_ = [totals, isListed = optFileProcess[1]->isChecked()] { return TotalsText(totals, isListed); };
        WordFileCount();
    });
}

void frmMain::WordFileCount()
{
    lblFileCount->setText(wordFileCount_ ? wordFileCount_() : QString());
}

}  // namespace tessarine
