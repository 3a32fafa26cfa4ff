#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "app/GlobalState.h"
#include "desktop/QtMessageBox.h"
#include "i18n/QtText.h"
#include "shell/HelpViewer.h"
#include "support/qt/ShellRecorder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;

/// What the box on the screen shows, and presses of its buttons, one after the other.
struct Shown {
    std::string title;
    std::string text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    std::string details;
};

Shown shown;

void PressNext(std::vector<QMessageBox::StandardButton> buttons)
{
    QTimer::singleShot(0, qApp, [buttons = std::move(buttons)] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return PressNext(buttons);  // not up yet
        shown = {box->windowTitle().toStdString(), box->text().toStdString(), box->icon(), box->standardButtons(),
                 box->informativeText().toStdString()};
        const auto first = buttons.front();
        if (buttons.size() > 1)
            PressNext({buttons.begin() + 1, buttons.end()});
        QTest::mouseClick(box->button(first), Qt::LeftButton);
    });
}

TEST(MessageBox, ShowsTextTitleIconAndButtons)
{
    PressNext({QMessageBox::No});

    const MessageAnswer answer =
        ShowQtMessageBox({u"Sure? <b>100 %</b>", MessageIcon::Exclamation, MessageButtons::YesNo, u"Start", false,
                          u"Folder: /decks\nNo backups are made."});

    EXPECT_EQ(answer, MessageAnswer::No);
    EXPECT_EQ(shown.title, "Start");
    EXPECT_EQ(shown.text, "Sure? <b>100 %</b>");
    EXPECT_EQ(shown.details, "Folder: /decks\nNo backups are made.");
    EXPECT_EQ(shown.icon, QMessageBox::Warning);
    EXPECT_EQ(shown.buttons, QMessageBox::Yes | QMessageBox::No);
}

/// The words on the buttons of a question, under a language file.
std::vector<std::string> ButtonsIn(const String& languageFile)
{
    const String before = std::exchange(CurrentLanguageFile, languageFile);
    std::vector<std::string> words;
    QTimer::singleShot(0, qApp, [&words] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        for (const auto button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
            words.push_back(box->button(button)->text().remove(u'&').toStdString());
        box->reject();
    });
    ShowQtMessageBox({u"Sure?", MessageIcon::Exclamation, MessageButtons::YesNoCancel, {}, false});
    CurrentLanguageFile = before;
    return words;
}

TEST(MessageBox, SpeaksTheChosenLanguageAtOnce)
{
    EXPECT_THAT(ButtonsIn(u"German.lng"), ElementsAre("Ja", "Nein", "Abbrechen"));
    EXPECT_THAT(ButtonsIn(u"English.lng"), ElementsAre("Yes", "No", "Cancel"));
    EXPECT_THAT(ButtonsIn(u"French.lng"), ElementsAre("Oui", "Non", "Annuler"));
    EXPECT_THAT(ButtonsIn(u"Spanish.lng"), ElementsAre("Sí", "No", "Cancelar"));
    EXPECT_THAT(ButtonsIn(u"Polish.lng"), ElementsAre("Tak", "Nie", "Anuluj"));
    EXPECT_THAT(ButtonsIn(u"Russian.lng"), ElementsAre("Да", "Нет", "Отмена"));
    EXPECT_THAT(ButtonsIn(u"Chinese(Big5).lng"), ElementsAre("是(Y)", "否(N)", "取消"));
}

TEST(MessageBox, SpeaksTheDesktopsLanguageWhereTheChosenOneIsNotKnown)
{
    const QLocale before;
    QLocale::setDefault(QLocale::German);

    EXPECT_THAT(ButtonsIn(u"somebody's own.lng"), ElementsAre("Ja", "Nein", "Abbrechen"));

    QLocale::setDefault(before);
}

/// The width of the details of a question.
int WidthFor(const String& details)
{
    int width = 0;
    QTimer::singleShot(0, qApp, [&width] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        for (const QLabel* label : box->findChildren<QLabel*>())
            if (label->text() == box->informativeText())
                width = label->width();
        box->reject();
    });
    ShowQtMessageBox({u"Sure?", MessageIcon::Exclamation, MessageButtons::YesNo, {}, false, details});
    return width;
}

TEST(MessageBox, ShowsLinesOfTheDetailsWholeUnlessTheyAreVeryLong)
{
    const QFontMetrics metrics(QApplication::font("QMessageBox"));
    const QString line = "Search, without a change: 1000 presentations";

    EXPECT_GE(WidthFor(FromQt("Folder\n" + line)), metrics.horizontalAdvance(line));
    EXPECT_LT(WidthFor(FromQt(line.repeated(20))), metrics.horizontalAdvance(line) * 3);
}

TEST(MessageBox, HasTheApplicationsTitleByDefault)
{
    PressNext({QMessageBox::Ok});

    EXPECT_EQ(ShowQtMessageBox({u"Done"}), MessageAnswer::Ok);
    EXPECT_EQ(shown.title, "Tessarine");
    EXPECT_EQ(shown.icon, QMessageBox::NoIcon);
}

TEST(MessageBox, GivesEachAnswer)
{
    for (const auto& [button, answer] :
         {std::pair(QMessageBox::Yes, MessageAnswer::Yes), std::pair(QMessageBox::No, MessageAnswer::No),
          std::pair(QMessageBox::Cancel, MessageAnswer::Cancel)}) {
        PressNext({button});
        EXPECT_EQ(ShowQtMessageBox({u"Save?", MessageIcon::None, MessageButtons::YesNoCancel}), answer);
    }
}

TEST(MessageBox, HelpOpensTheHelpAndLeavesTheQuestionOpen)
{
    const ShellRecorder shell;
    PressNext({QMessageBox::Help, QMessageBox::Yes});

    const MessageAnswer answer = ShowQtMessageBox({u"Start?", MessageIcon::None, MessageButtons::YesNo, u"", true});

    EXPECT_EQ(answer, MessageAnswer::Yes);
    EXPECT_THAT(shell.Opened(), ElementsAre(HelpPath()));
}

}  // namespace
}  // namespace tessarine
