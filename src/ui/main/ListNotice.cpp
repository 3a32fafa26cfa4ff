#include <QLabel>
#include <QRadioButton>

#include "app/LanguageText.h"
#include "i18n/QtText.h"
#include "ui/main/frmMain.h"
#include "ui/main/ItemsGrid.h"

// What the window says beside and in the grid about the pairs that stand there, or don't.

namespace tessarine
{

/// A text with the caption of the choice that makes the pairs of the grid count.
QString frmMain::TextNamingChoice(const String& key) const
{
    const QString caption = optLoad[1]->text().remove(u'&');
    return ToQt(GetLngString(u"frmMain", key)).replace(QStringLiteral("%s"), caption);
}

/// Above the grid: pairs that stand there while a run takes those of a file are not used, which nobody should have to
/// guess from their colour.
void frmMain::TellListUse()
{
    const bool isUnused = optLoad[0]->isChecked() && grdItems->Rows() > 1;
    if (isUnused)
        lblPairsNotice->setText(TextNamingChoice(wasImportedUnused_ ? u"ListNotice.Imported" : u"ListNotice.NotUsed"));
    lblPairsNotice->setVisible(isUnused);
}

}  // namespace tessarine
