#include "shell/WindowPlace.h"

#include <gmock/gmock.h>

#include <QScreen>
#include <QWidget>

#include "platform/ProgramInfo.h"
#include "settings/SettingsStore.h"
#include "support/qt/UserFolders.h"

namespace tessarine
{
namespace
{

class WindowPlaceTest : public testing::Test
{
protected:
    const UserFolders user_;
};

TEST_F(WindowPlaceTest, ComesBackAtTheNextStart)
{
    {
        QWidget window;
        window.setGeometry(40, 60, 320, 240);
        window.show();
        KeepPlace(window, u"frmOne");
    }
    QWidget window;

    RestorePlace(window, u"frmOne");

    EXPECT_EQ(window.geometry(), QRect(40, 60, 320, 240));
}

TEST_F(WindowPlaceTest, IsThatOfOneWindowAlone)
{
    QWidget first;
    first.setGeometry(40, 60, 320, 240);
    KeepPlace(first, u"frmOne");
    QWidget second;
    const QRect before = second.geometry();

    RestorePlace(second, u"frmTwo");

    EXPECT_EQ(second.geometry(), before);
}

TEST_F(WindowPlaceTest, KnowsAWindowThatFillsTheScreenAndItsSizeBefore)
{
    {
        QWidget window;
        window.setGeometry(40, 60, 320, 240);
        window.showMaximized();
        KeepPlace(window, u"frmOne");
    }
    QWidget window;

    RestorePlace(window, u"frmOne");

    EXPECT_TRUE(window.isMaximized());
    EXPECT_EQ(window.normalGeometry().size(), QSize(320, 240));
}

TEST_F(WindowPlaceTest, ComesOntoAScreenThatIsThere)
{
    {
        QWidget window;
        window.setGeometry(20'000, 20'000, 320, 240);
        KeepPlace(window, u"frmOne");
    }
    QWidget window;

    RestorePlace(window, u"frmOne");

    EXPECT_TRUE(window.screen()->availableGeometry().intersects(window.geometry()));
}

TEST_F(WindowPlaceTest, IgnoresWhatWasNotKeptByIt)
{
    for (const String& text : {String(u""), String(u"nonsense"), String(u"AdnQywADAAA="), String(1'000'000, u'A')}) {
        SaveSetting(String(ApplicationTitle), u"frmOne", u"Place", text);
        QWidget window;
        const QRect before = window.geometry();

        RestorePlace(window, u"frmOne");

        EXPECT_EQ(window.geometry(), before);
    }
}

TEST_F(WindowPlaceTest, LeavesRoomForAFrameOnTheScreen)
{
    const QWidget window;
    const QSize screen = window.screen()->availableSize();

    EXPECT_EQ(FittingSize(window, {200, 100}), QSize(200, 100));
    EXPECT_LT(FittingSize(window, {50'000, 50'000}).width(), screen.width());
    EXPECT_LT(FittingSize(window, {50'000, 50'000}).height(), screen.height());
}

TEST(PlaceOver, IsTheMiddleOfTheOwnerAsFarAsTheScreenHasRoom)
{
    const QRect screen(100, 50, 800, 600);

    EXPECT_EQ(PlaceOver({200, 150, 400, 300}, {200, 100}, screen), QPoint(300, 250));
    EXPECT_EQ(PlaceOver({90, 20, 100, 100}, {400, 300}, screen), QPoint(100, 50));
    EXPECT_EQ(PlaceOver({850, 600, 100, 100}, {400, 300}, screen), QPoint(500, 350));
    EXPECT_EQ(PlaceOver({200, 150, 400, 300}, {4000, 3000}, screen), QPoint(100, 50));
}

}  // namespace
}  // namespace tessarine
