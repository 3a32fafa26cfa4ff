#include "ui/run/frmIntervention.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace tessarine
{
namespace
{

class InterventionTest : public testing::Test
{
protected:
    std::string TextOf(const char* label) { return dialog_.findChild<QLabel*>(label)->text().toStdString(); }

    void Click(const char* button) { QTest::mouseClick(dialog_.findChild<QPushButton*>(button), Qt::LeftButton); }

    frmIntervention dialog_;
};

TEST_F(InterventionTest, TellsTheWayOutStepByStep)
{
    EXPECT_EQ(dialog_.windowTitle(), "Manual Intervention *May* be required");
    EXPECT_EQ(TextOf("Label1"), "Microsoft PowerPoint is not responding  to Tessarine's Instructions");
    EXPECT_EQ(TextOf("Label2"), "1. Press [Alt+Tab] to switch to Microsoft PowerPoint");
    EXPECT_EQ(TextOf("Label3"),
              "2. Clear the message box Microsoft PowerPoint is showing ( you may have to drag this                "
              "message box out of the way to see it)");
    EXPECT_EQ(TextOf("Label4"), "3. Press [Alt+tab] to return to Tessarine");
    EXPECT_EQ(TextOf("Label5"), "4. Click Ok below");
    EXPECT_EQ(TextOf("Label6"), "(this Message box will clear automatically if Microsoft PowerPoint starts again)");
    EXPECT_EQ(dialog_.findChild<QPushButton*>("cmdRestart")->text(), "Restart Microsofts PowerPoint");
}

TEST_F(InterventionTest, ClosesByOk)
{
    dialog_.open();
    EXPECT_TRUE(dialog_.isModal());

    Click("cmdOk");

    EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(InterventionTest, StaysWhenARestartIsAskedFor)
{
    dialog_.open();

    Click("cmdRestart");

    EXPECT_TRUE(dialog_.isVisible());
}

}  // namespace
}  // namespace tessarine
