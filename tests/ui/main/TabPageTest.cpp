#include "ui/main/TabPage.h"

#include <gmock/gmock.h>

#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

namespace tessarine
{
namespace
{

/// A page over a column of buttons, shown in a size of its own.
class TabPageTest : public testing::Test
{
protected:
    explicit TabPageTest(int buttons = 20)
    {
        auto* const frame = new QWidget;
        column_ = new QVBoxLayout(frame);
        for (int i = 0; i < buttons; ++i)
            AddButton();
        page_ = std::make_unique<TabPage>(frame);
        page_->resize(200, 120);
        page_->show();
        page_->activateWindow();
    }

    void AddButton()
    {
        buttons_.push_back(new QPushButton("Button"));
        column_->addWidget(buttons_.back());
    }

    bool IsInSight(const QWidget& control) const
    {
        return page_->viewport()->rect().contains(QRect(control.mapTo(page_->viewport(), QPoint()), control.size()));
    }

    QVBoxLayout* column_;
    std::vector<QPushButton*> buttons_;
    std::unique_ptr<TabPage> page_;
};

TEST_F(TabPageTest, ScrollsToTheControlThatTabReaches)
{
    buttons_.front()->setFocus();
    ASSERT_FALSE(IsInSight(*buttons_.back()));

    for (std::size_t i = 1; i < buttons_.size(); ++i)
        QTest::keyClick(page_->focusWidget(), Qt::Key_Tab);

    EXPECT_EQ(page_->focusWidget(), buttons_.back());
    EXPECT_TRUE(IsInSight(*buttons_.back()));
    EXPECT_FALSE(IsInSight(*buttons_.front()));
}

TEST_F(TabPageTest, AsksForRoomForAllItsControlsButNotForMoreThanTheScreenHas)
{
    EXPECT_LT(page_->minimumSizeHint().height(), page_->screen()->availableSize().height());
    EXPECT_EQ(page_->minimumSizeHint().width(), page_->widget()->minimumSizeHint().width());

    for (int i = 0; i < 200; ++i)
        AddButton();
    QCoreApplication::processEvents();

    EXPECT_GT(page_->widget()->minimumSizeHint().height(), page_->screen()->availableSize().height());
    // Of the window around it, a notice of three lines is 7 lines high, and all the rest 14.
    const int around = 21 * page_->fontMetrics().height();
    EXPECT_LE(page_->minimumSizeHint().height() + around, page_->screen()->availableSize().height());
}

}  // namespace
}  // namespace tessarine
