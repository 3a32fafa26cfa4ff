#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

#include "shell/frmAbout.h"
#include "support/ErrorLogRecorder.h"

namespace tessarine
{
namespace
{

class AboutTest : public testing::Test
{
protected:
    AboutTest() { about_.open(); }

    template <class Control = QLabel>
    Control& Find(const char* name)
    {
        auto* const control = about_.findChild<Control*>(name);
        if (!control)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }

    ErrorLogRecorder log_;
    frmAbout about_;
};

TEST_F(AboutTest, SaysWhatTheProgramIs)
{
    EXPECT_EQ(about_.windowTitle(), "About - Tessarine");
    EXPECT_EQ(Find("lblAbout1").text(), "Tessarine");
    EXPECT_TRUE(QRegularExpression("^Version \\d+\\.\\d+\\.\\d+$").match(Find("lblVersion").text()).hasMatch())
        << Find("lblVersion").text().toStdString();
    EXPECT_FALSE(Find("imgIcon").pixmap().isNull());
    EXPECT_TRUE(about_.isModal());
}

TEST_F(AboutTest, IsClosedByItsButton)
{
    QTest::mouseClick(&Find<QPushButton>("cmdQuit"), Qt::LeftButton);

    EXPECT_FALSE(about_.isVisible());
    EXPECT_THAT(log_.Lines(), testing::IsEmpty());
}

TEST_F(AboutTest, IsClosedByEsc)
{
    QTest::keyClick(&about_, Qt::Key_Escape);

    EXPECT_FALSE(about_.isVisible());
}

TEST_F(AboutTest, IsClosedByEnter)
{
    QTest::keyClick(&about_, Qt::Key_Return);

    EXPECT_FALSE(about_.isVisible());
}

TEST_F(AboutTest, CanBeShownOnceMore)
{
    QTest::keyClick(&about_, Qt::Key_Escape);

    about_.open();

    EXPECT_TRUE(about_.isVisible());
}

}  // namespace
}  // namespace tessarine
