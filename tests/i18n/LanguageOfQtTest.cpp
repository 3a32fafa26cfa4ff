#include "i18n/LanguageOfQt.h"

#include <gmock/gmock.h>

#include <memory>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QWidget>

#include "app/ChosenLanguage.h"
#include "i18n/LanguageOfControls.h"

namespace tessarine
{
namespace
{

/// What Qt calls "Copy" in a text box's own menu, in a window that has taken its language.
std::string CopyIn(const String& languageFile)
{
    const ChosenLanguage language(ProgramFolder(), languageFile);
    QWidget window;
    ApplyLanguage(window, u"frmMain", ControlTips::Basic);
    QLineEdit box(&window);
    const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
    constexpr qsizetype copy = 4;  // undo, redo, a separator, cut
    return menu->actions().at(copy)->text().section(u'\t', 0, 0).remove(u'&').toStdString();
}

TEST(LanguageOfQt, HoldsForTheMenusOfTextBoxesInEachLanguage)
{
    EXPECT_EQ(CopyIn(u"English.lng"), "Copy");
    EXPECT_EQ(CopyIn(u"German.lng"), "Kopieren");
    EXPECT_EQ(CopyIn(u"French.lng"), "Copier");
    EXPECT_EQ(CopyIn(u"Spanish.lng"), "Copiar");
    EXPECT_EQ(CopyIn(u"Polish.lng"), "Skopiuj");
    EXPECT_EQ(CopyIn(u"Russian.lng"), "Копировать");
    EXPECT_EQ(CopyIn(u"Chinese(Big5).lng"), "複製(C)");
    EXPECT_EQ(CopyIn(u"English.lng"), "Copy");
}

}  // namespace
}  // namespace tessarine
