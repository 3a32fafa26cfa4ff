#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>

#include "model/SearchLocations.h"
#include "ui/main/Controls.h"
#include "ui/main/EntryBox.h"
#include "ui/main/FindBar.h"
#include "ui/main/Frame.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"
#include "ui/main/TabLayout.h"

namespace tessarine
{

namespace
{

constexpr int locationLeading = 4;  // between two lines, half of it above the first

/// A list whose margins can be set: Qt leaves that to derived classes.
class LocationView : public QListWidget
{
public:
    LocationView() { setViewportMargins(0, locationLeading / 2, 0, 0); }
};

QListWidget* LocationList()
{
    auto* const list = Named<LocationView>("lstLookIn");
    for (const SearchLocation& location : SearchLocations) {
        auto* const entry = new QListWidgetItem(QString::fromUtf16(location.caption), list);
        entry->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        entry->setCheckState(Qt::Unchecked);
    }
    // In columns, so that all 14 are seen at once.
    list->setFlow(QListView::TopToBottom);
    list->setWrapping(true);
    list->setResizeMode(QListView::Adjust);
    constexpr int columns = 2;
    constexpr int gap = 12;
    const QSize cell(list->sizeHintForColumn(0) + gap, list->sizeHintForRow(0) + locationLeading);
    const int frame = 2 * list->frameWidth() + locationLeading;
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setGridSize(cell);
    list->setFixedHeight((list->count() + columns - 1) / columns * cell.height() + frame);
    list->setMinimumWidth(columns * cell.width() + frame);
    return list;
}

}  // namespace

QWidget* frmMain::BuildReplacementTab()
{
    auto* const fraReplacement = Named<Frame>("fraReplacement");
    auto* const tab = new QVBoxLayout(fraReplacement);
    tab->addWidget(BuildListSource());

    optLoad[1] = NamedMember<QRadioButton>("optLoad", 1, "Using these values");
    // The two have different parents, so that of themselves they would not exclude each other.
    auto* const either = new QButtonGroup(fraReplacement);
    for (QRadioButton* option : optLoad)
        either->addButton(option);
    tab->addWidget(optLoad[1]);
    auto* const pnlLoadOptions = Named<QWidget>("pnlLoadOptions");
    pnlLoadOptions->setMouseTracking(true);
    auto* const panel = Indented(new QVBoxLayout(pnlLoadOptions));
    lblPairsNotice = Named<QLabel>("lblPairsNotice");
    lblPairsNotice->setTextFormat(Qt::PlainText);
    lblPairsNotice->setWordWrap(true);
    lblPairsNotice->hide();
    panel->addWidget(lblPairsNotice);
    grdItems = Named<ItemsGrid>("grdItems");
    panel->addWidget(grdItems, 1);
    findBar_ = new FindBar(pnlLoadOptions);
    panel->addWidget(findBar_);

    auto* const buttons = new QHBoxLayout;
    cmdAdd = Named<QPushButton>("cmdAdd", Icon("add"), "&Add");
    cmdDelete = Named<QPushButton>("cmdDelete", Icon("delete"), "&Delete");
    cmdSwap = Named<QPushButton>("cmdSwap", Icon("swap"), "Swap Values");
    for (QPushButton* button : {cmdAdd, cmdDelete, cmdSwap})
        buttons->addWidget(button);
    buttons->addStretch();
    panel->addLayout(buttons);
    panel->addWidget(BuildItemOptions());
    tab->addWidget(pnlLoadOptions, 1);
    return fraReplacement;
}

/// The file with the list.
QWidget* frmMain::BuildListSource()
{
    auto* const source = new QWidget;
    auto* const column = new QVBoxLayout(source);
    column->setContentsMargins({});
    optLoad[0] =
        NamedMember<QRadioButton>("optLoad", 0, "Load a search/replace list from this file (Excel .XLS, .CSV or .TAB)");
    optLoad[0]->setChecked(true);
    column->addWidget(optLoad[0]);

    picBrowse1 = Named<QWidget>("picBrowse1");
    auto* const row = Indented(new QHBoxLayout(picBrowse1));
    txtLoadsearch = Named<EntryBox>("txtLoadsearch");
    cmdBrowse1 = NamedPictureButton("cmdBrowse1", "browse-file");
    row->addWidget(txtLoadsearch, 1);
    row->addWidget(cmdBrowse1);
    column->addWidget(picBrowse1);
    return source;
}

/// What holds for the selected rows: locations, options.
QWidget* frmMain::BuildItemOptions()
{
    auto* const part = new QWidget;
    auto* const grid = new QGridLayout(part);
    grid->setContentsMargins({});
    auto* const lblSearchLocation = Named<QLabel>("lblSearchLocation", "Search Location");
    lstLookIn = LocationList();
    lblSearchLocation->setBuddy(lstLookIn);
    chkSelectAll = Named<QCheckBox>("chkSelectAll", "Select/De-Select Search Locations");
    grid->addWidget(lblSearchLocation, 0, 0);
    grid->addWidget(lstLookIn, 1, 0);
    grid->addWidget(chkSelectAll, 2, 0);

    auto* const options = new QVBoxLayout;
    chkMatchCase = Named<QCheckBox>("chkMatchCase", "&Match Case");
    chkMatchWholeWord = Named<QCheckBox>("chkMatchWholeWord", "Match Whole Word");
    chkHAlfFulll = Named<QCheckBox>("chkHAlfFulll", "Match Half/Full Width of Form");
    chkPromptOnReplace = Named<QCheckBox>("chkPromptOnReplace", "Prompt on Replace ");
    for (QCheckBox* box : {chkMatchCase, chkMatchWholeWord, chkHAlfFulll, chkPromptOnReplace})
        options->addWidget(box);
    options->addStretch();
    grid->addLayout(options, 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setHorizontalSpacing(ColumnGap);
    return part;
}

}  // namespace tessarine
