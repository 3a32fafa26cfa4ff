#include <QImage>
#include <QPushButton>
#include <QTabWidget>

#include "desktop/DarkColours.h"
#include "desktop/OutlinedStyle.h"
#include "i18n/frmChangeLanguage.h"
#include "ui/main/MainWindowTest.h"
#include "ui/run/frmProcessingDocuments.h"

// Where the keyboard acts, for those who see it.

namespace tessarine
{
namespace
{

using testing::IsEmpty;

/// The windows in the look of the program.
class FocusTest : public MainWindowTest
{
protected:
    FocusTest()
    {
        QApplication::setStyle(new OutlinedStyle("Fusion"));  // the application owns it
        EditPairs({{u"cat", u"dog"}});
        shell.NextFile(folder.Write(u"broken.tsq", "not a project"));
        Choose("mnuOpen");  // which shows a notice
    }
    ~FocusTest() override { QApplication::setStyle("Fusion"); }

    /// The controls that Tab reaches and whose picture doesn't change when they get the focus.
    static std::vector<std::string> ControlsWithoutVisibleFocus(QWidget& window)
    {
        window.activateWindow();
        std::vector<std::string> without;
        QWidget away(&window);  // where the focus is meanwhile
        away.setFocusPolicy(Qt::StrongFocus);
        away.show();
        for (QWidget* control : window.findChildren<QWidget*>()) {
            BringIntoView(*control);
            // The default button of a dialog looks as if it had the focus, until another one has it.
            const auto* const button = qobject_cast<QPushButton*>(control);
            if (button != nullptr && button->isDefault())
                continue;
            const bool isReached = control->isVisible() && control->isEnabled() && control != &away &&
                                   control->window() == &window && control->focusProxy() == nullptr &&
                                   (control->focusPolicy() & Qt::TabFocus) != 0;
            if (isReached && PictureWithFocusOn(away, *control) == PictureWithFocusOn(*control, *control))
                without.push_back(control->metaObject()->className() + std::string(" ") +
                                  control->objectName().toStdString());
        }
        return without;
    }

    static QImage PictureWithFocusOn(QWidget& focused, const QWidget& control)
    {
        focused.setFocus(Qt::OtherFocusReason);
        QCoreApplication::processEvents();
        constexpr QPoint around(4, 4);
        QWidget& window = *control.window();
        return window.grab(QRect(control.mapTo(&window, -around), control.size() + 2 * QSize(around.x(), around.y())))
            .toImage();
    }

    void ExpectVisibleFocusEverywhere()
    {
        for (int tab = 0; tab < 3; ++tab) {
            ShowTab(tab);
            EXPECT_THAT(ControlsWithoutVisibleFocus(Window()), IsEmpty()) << "tab " << tab;
        }
        frmProcessingDocuments& window = frmProcessingDocuments::Instance(&Window());
        window.show();
        for (int tab = 0; tab < 4; ++tab) {
            window.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(tab);
            EXPECT_THAT(ControlsWithoutVisibleFocus(window), IsEmpty()) << "tab " << tab << " of the run";
        }
        window.close();
        frmChangeLanguage dialog(&Window());
        dialog.show();
        EXPECT_THAT(ControlsWithoutVisibleFocus(dialog), IsEmpty());
    }
};

TEST_F(FocusTest, CanAlwaysBeSeen)
{
    ExpectVisibleFocusEverywhere();
}

TEST_F(FocusTest, CanAlwaysBeSeenOnADarkDesktop)
{
    const QPalette light = QApplication::palette();
    QApplication::setPalette(DarkColours());

    ExpectVisibleFocusEverywhere();

    QApplication::setPalette(light);
}

}  // namespace
}  // namespace tessarine
