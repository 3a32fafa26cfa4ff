#include "ui/run/HitDelegate.h"

#include <gmock/gmock.h>

#include <set>

#include <QImage>
#include <QPainter>

#include "i18n/QtText.h"
#include "ui/run/HitsModel.h"
#include "ui/run/SampleHits.h"

namespace tessarine
{
namespace
{

class HitDelegateTest : public testing::Test
{
protected:
    int WidthOf(const HitLine& line) const
    {
        const auto of = [this](const String& text) { return metrics_.horizontalAdvance(ToQt(text)); };
        return of(line.before) + of(line.found) + (line.becomes ? of(*line.becomes) : 0) + of(line.after);
    }
    HitLine Fit(const HitLine& line, int width) const { return Fitted(line, width, metrics_, metrics_); }

    /// The colours of a hit's row, drawn with a palette.
    static std::set<QRgb> ColoursOf(const Hit& hit, const QPalette& palette)
    {
        HitsModel model;
        FileReport report;
        report.hits = {hit};
        model.Show({{{report, {}, {}}}, {}, {}});
        HitDelegate delegate;
        QStyleOptionViewItem option;
        option.palette = palette;
        option.rect = QRect(0, 0, 500, 60);
        option.state = QStyle::State_Enabled;
        QImage image(option.rect.size(), QImage::Format_RGB32);
        image.fill(palette.color(QPalette::Base));
        QPainter painter(&image);
        delegate.paint(&painter, option, model.index(0));
        painter.end();
        std::set<QRgb> colours;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                colours.insert(image.pixel(x, y));
        return colours;
    }

    static QPalette Dark()
    {
        QPalette palette(QColor(0x20, 0x20, 0x20));
        palette.setColor(QPalette::Base, QColor(0x10, 0x10, 0x10));
        palette.setColor(QPalette::Text, Qt::white);
        return palette;
    }

    const QFontMetrics metrics_{QFont()};
    const String longText_ = String(200, u'm');
};

TEST_F(HitDelegateTest, LeavesALineAloneThatFits)
{
    const HitLine line = Fit({u"a ", u"cat", u"dog", u" here"}, 10'000);

    EXPECT_EQ(line.before + line.found + *line.becomes + line.after, u"a catdog here");
}

TEST_F(HitDelegateTest, CutsBothSidesAndKeepsTheHit)
{
    const HitLine line = Fit({longText_, u"cat", {}, longText_}, 400);

    EXPECT_EQ(line.found, u"cat");
    EXPECT_EQ(line.before.front(), u'…');
    EXPECT_EQ(line.after.back(), u'…');
    EXPECT_NEAR(static_cast<double>(line.before.size()), static_cast<double>(line.after.size()), 2);
    EXPECT_LE(WidthOf(line), 400);
}

TEST_F(HitDelegateTest, GivesTheRoomOfAShortSideToTheOther)
{
    const HitLine atStart = Fit({u"a ", u"cat", {}, longText_}, 400);
    const HitLine atEnd = Fit({longText_, u"cat", {}, u" z"}, 400);

    EXPECT_EQ(atStart.before, u"a ");
    EXPECT_EQ(atStart.after.back(), u'…');
    EXPECT_EQ(atEnd.after, u" z");
    EXPECT_EQ(atEnd.before.front(), u'…');
    EXPECT_GT(WidthOf(atStart), 350);
    EXPECT_LE(WidthOf(atEnd), 400);
}

TEST_F(HitDelegateTest, CutsAHitThatIsLongerThanTheLineInItsMiddle)
{
    const HitLine line = Fit({u"a", u"begin" + longText_ + u"end", {}, u"z"}, 300);

    EXPECT_THAT(ToUtf8(line.found), testing::AllOf(testing::StartsWith("begin"), testing::EndsWith("end")));
    EXPECT_EQ(line.before + line.after, u"");
    EXPECT_LE(WidthOf(line), 300);
}

TEST_F(HitDelegateTest, SharesALineThatIsTooShortBetweenOldAndNew)
{
    const HitLine line = Fit({{}, longText_, longText_, {}}, 300);

    EXPECT_FALSE(line.found.empty());
    EXPECT_FALSE(line.becomes->empty());
    EXPECT_LE(WidthOf(line), 300);
}

TEST_F(HitDelegateTest, DividesNoCharacterWhenItCuts)
{
    String faces;
    for (int i = 0; i < 100; ++i)
        faces += u"\U0001F600";

    const HitLine line = Fit({faces, u"cat", {}, faces}, 300);

    EXPECT_FALSE(ToQt(line.before + line.after).toUcs4().contains(0xFFFD));
    EXPECT_LE(WidthOf(line), 300);
}

TEST_F(HitDelegateTest, CutsWritingFromRightToLeftAtItsOwnEnds)
{
    String hebrew;
    for (int i = 0; i < 60; ++i)
        hebrew += u"שלום ";

    const HitLine line = Fit({hebrew, u"חתול", {}, hebrew}, 300);

    EXPECT_EQ(line.found, u"חתול");
    EXPECT_EQ(line.before.front(), u'…');
    EXPECT_EQ(line.after.back(), u'…');
}

TEST_F(HitDelegateTest, MarksHitsOldAndNewTextInColoursOfTheDesktop)
{
    const Hit found = HitOnSlide(1, u"a ", u"cat", u" here");
    const QPalette light(Qt::white);

    EXPECT_TRUE(ColoursOf(found, light).contains(0xffffe27a));
    EXPECT_TRUE(ColoursOf(found, Dark()).contains(0xff6b5300));
    const std::set<QRgb> replaced = ColoursOf(Replaced(found, u"dog"), light);
    EXPECT_TRUE(replaced.contains(0xffffdcd9));
    EXPECT_TRUE(replaced.contains(0xffc8f0d0));
    EXPECT_FALSE(replaced.contains(0xffffe27a));
    EXPECT_TRUE(ColoursOf(Replaced(found, u"dog"), Dark()).contains(0xff1f5531));
}

TEST_F(HitDelegateTest, IsOneHeightForAllRows)
{
    HitsModel model;
    FileReport report;
    report.hits = {HitOnSlide(1, {}, u"cat", {}), HitOnSlide(1, longText_, longText_, longText_)};
    model.Show({{{report, {}, {}}}, {}, {}});
    const HitDelegate delegate;

    EXPECT_EQ(delegate.sizeHint({}, model.index(0)), delegate.sizeHint({}, model.index(1)));
}

}  // namespace
}  // namespace tessarine
