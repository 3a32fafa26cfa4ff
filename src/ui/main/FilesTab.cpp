#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>

#include "i18n/QtText.h"
#include "run/JobInputs.h"
#include "ui/main/Controls.h"
#include "ui/main/EntryBox.h"
#include "ui/main/Frame.h"
#include "ui/main/frmMain.h"
#include "ui/main/TabLayout.h"

namespace tessarine
{

QWidget* frmMain::BuildFilesTab()
{
    auto* const fraFileProcess = Named<Frame>("fraFileProcess");
    auto* const tab = new QVBoxLayout(fraFileProcess);

    optFileProcess[0] = NamedMember<QRadioButton>("optFileProcess", 0, "Scan for files");
    optFileProcess[0]->setChecked(true);
    tab->addWidget(optFileProcess[0]);

    auto* const scan = Indented(new QGridLayout);
    auto* const lblStartfolder = Named<QLabel>("lblStartfolder", "Start folder");
    picBrowse2 = Named<QWidget>("picBrowse2");
    auto* const folderRow = new QHBoxLayout(picBrowse2);
    folderRow->setContentsMargins({});
    txtStartFolder = Named<EntryBox>("txtStartFolder");
    cmdBrowse2 = NamedPictureButton("cmdBrowse2", "browse");
    folderRow->addWidget(txtStartFolder, 1);
    folderRow->addWidget(cmdBrowse2);
    lblStartfolder->setBuddy(txtStartFolder);
    chkIncludesubfolders = Named<QCheckBox>("chkIncludesubfolders", "&Include subfolders");
    auto* const lblSpreadsheettypes = Named<QLabel>("lblSpreadsheettypes", "File Type");
    cboSpreadsheetType = Named<QComboBox>("cboSpreadsheetType");
    // The one entry. A job with another pattern is shown, and then run, with this one.
    cboSpreadsheetType->addItem(ToQt(PresentationPattern));
    lblSpreadsheettypes->setBuddy(cboSpreadsheetType);
    scan->addWidget(lblStartfolder, 0, 0);
    scan->addWidget(picBrowse2, 0, 1, 1, 2);
    scan->addWidget(chkIncludesubfolders, 1, 1, 1, 2);
    scan->addWidget(lblSpreadsheettypes, 2, 0);
    scan->addWidget(cboSpreadsheetType, 2, 1);
    scan->setColumnStretch(2, 1);
    tab->addLayout(scan);
    tab->addSpacing(ColumnGap);

    optFileProcess[1] = NamedMember<QRadioButton>("optFileProcess", 1, "Get filenames from a text file :");
    tab->addWidget(optFileProcess[1]);
    picBrowse3 = Named<QWidget>("picBrowse3");
    auto* const listRow = Indented(new QHBoxLayout(picBrowse3));
    txtGetFileName = Named<EntryBox>("txtGetFileName");
    cmdBrowse3 = NamedPictureButton("cmdBrowse3", "browse-file");
    listRow->addWidget(txtGetFileName, 1);
    listRow->addWidget(cmdBrowse3);
    tab->addWidget(picBrowse3);
    tab->addSpacing(ColumnGap);
    lblFileCount = Named<QLabel>("lblFileCount");
    lblFileCount->setWordWrap(true);
    tab->addWidget(lblFileCount);
    tab->addStretch();
    return fraFileProcess;
}

}  // namespace tessarine
