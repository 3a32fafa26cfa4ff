#include "ui/main/MainWindowTest.h"

#include <QLineEdit>
#include <QToolButton>
#include <QWheelEvent>

// The arrow buttons beside the two counts.

namespace tessarine
{
namespace
{

struct BoxWithArrows {
    const char* box;
    const char* arrows;
};

class UpDownTest : public MainWindowTest, public testing::WithParamInterface<BoxWithArrows>
{
protected:
    UpDownTest() { ShowTab(2); }

    QLineEdit& Box() { return The<QLineEdit>(GetParam().box); }
    std::string Count() { return Box().text().toStdString(); }
    void Put(const char* text) { Box().setText(text); }

    void ClickArrow(Qt::ArrowType arrow)
    {
        for (QToolButton* button : The(GetParam().arrows).findChildren<QToolButton*>())
            if (button->arrowType() == arrow) {
                ASSERT_TRUE(button->isVisible());
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        FAIL() << "no such arrow";
    }

    void TurnWheel(int eighthsOfADegree)
    {
        const QPointF at = Box().rect().center();
        QWheelEvent turn(at, Box().mapToGlobal(at), {}, QPoint(0, eighthsOfADegree), Qt::NoButton, {},
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Box(), &turn);
    }
};

TEST_P(UpDownTest, MovesTheCountByOne)
{
    Put("41");

    ClickArrow(Qt::UpArrow);
    EXPECT_EQ(Count(), "42");

    ClickArrow(Qt::DownArrow);
    ClickArrow(Qt::DownArrow);
    EXPECT_EQ(Count(), "40");
    EXPECT_TRUE(Box().hasFocus());
}

TEST_P(UpDownTest, EndsAtZero)
{
    Put("1");

    ClickArrow(Qt::DownArrow);
    EXPECT_EQ(Count(), "0");

    ClickArrow(Qt::DownArrow);
    EXPECT_EQ(Count(), "0");
}

TEST_P(UpDownTest, EndsAtNineMillionAndSomething)
{
    Put("9999998");

    ClickArrow(Qt::UpArrow);
    EXPECT_EQ(Count(), "9999999");

    ClickArrow(Qt::UpArrow);
    EXPECT_EQ(Count(), "9999999");
}

TEST_P(UpDownTest, TakesATextThatIsNoNumberForZero)
{
    Put("abc");

    ClickArrow(Qt::UpArrow);

    EXPECT_EQ(Count(), "1");
}

TEST_P(UpDownTest, FollowsTheArrowKeys)
{
    Put("7");

    QTest::keyClick(&Box(), Qt::Key_Up);
    EXPECT_EQ(Count(), "8");

    QTest::keyClick(&Box(), Qt::Key_Down);
    QTest::keyClick(&Box(), Qt::Key_Down);
    EXPECT_EQ(Count(), "6");
}

TEST_P(UpDownTest, FollowsTheWheelInABoxWithTheFocus)
{
    Put("7");
    Box().setFocus();

    TurnWheel(240);
    EXPECT_EQ(Count(), "8");

    TurnWheel(-120);
    TurnWheel(-120);
    EXPECT_EQ(Count(), "6");
}

TEST_P(UpDownTest, LeavesTheCountToAWheelThatPassesBy)
{
    Put("7");
    The("chkBackupMode").setFocus();

    TurnWheel(120);

    EXPECT_EQ(Count(), "7");
}

INSTANTIATE_TEST_SUITE_P(Counts, UpDownTest,
                         testing::Values(BoxWithArrows{"lstRestartFileCount", "UpDown1"},
                                         BoxWithArrows{"lstRestartAfterSecond", "UpDown2"}),
                         [](const auto& parameter) { return std::string(parameter.param.arrows); });

}  // namespace
}  // namespace tessarine
