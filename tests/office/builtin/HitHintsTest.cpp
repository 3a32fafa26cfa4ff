#include "DeckOnDisk.h"

namespace tessarine::test
{
namespace
{

/// What the surface tells of hits beyond PowerPoint's object model.
class HitHints : public testing::Test
{
protected:
    std::shared_ptr<powerpoint::TextRange> TextOf(std::size_t slide, std::size_t shape) const
    {
        return ShapeOf(*presentation_, slide, shape)->TextFrame()->TextRange();
    }

    const DeckOnDisk deck_{Deck()
                               .Slide(TextBox(u"before the title").Named(u"Box 1"),
                                      Title(Paragraph(u"Our pets"), Paragraph(u"and plants")))
                               .Slide(TextBox(u"a\U0001F408cat").Named(u"B\u00F6x 2"))
                               .Slide(CenteredTitle(u"Welcome"))};
    const std::shared_ptr<powerpoint::Presentation> presentation_ = deck_.Open();
};

TEST_F(HitHints, TitleIsTheTextOfTheTitlePlaceholder)
{
    EXPECT_EQ(SlideOf(*presentation_, 1)->Title(), u"Our pets\rand plants");
    EXPECT_EQ(SlideOf(*presentation_, 2)->Title(), u"");
    EXPECT_EQ(SlideOf(*presentation_, 3)->Title(), u"Welcome");
}

TEST_F(HitHints, TitleFollowsEdits)
{
    ReplaceInShape(*presentation_, 1, 2, u"pets", u"animals");

    EXPECT_EQ(SlideOf(*presentation_, 1)->Title(), u"Our animals\rand plants");
}

TEST_F(HitHints, TextAtGivesTheUnitsAskedForOrAsManyAsThereAre)
{
    const auto text = TextOf(2, 1);

    EXPECT_EQ(text->TextAt(1, 3), u"a\U0001F408");
    EXPECT_EQ(text->TextAt(4, 100), u"cat");
    EXPECT_EQ(text->TextAt(7, 1), u"");
    EXPECT_EQ(text->TextAt(100, 1), u"");
    EXPECT_EQ(text->TextAt(1, 0), u"");
    EXPECT_EQ(text->TextAt(-5, 1), u"a");
    EXPECT_EQ(text->TextAt(2147483647, 2147483647), u"");
}

TEST_F(HitHints, TextAtOfAHitIsThatOfTheShape)
{
    const auto hit = TextOf(2, 1)->Find(u"cat", 0, 0, 0);

    EXPECT_EQ(hit->TextAt(1, 1), u"a");
}

TEST_F(HitHints, TextAtSeesEdits)
{
    ReplaceInShape(*presentation_, 2, 1, u"cat", u"horse");

    EXPECT_EQ(TextOf(2, 1)->TextAt(4, 9), u"horse");
}

TEST_F(HitHints, NamesAreTheSameWhetherTheyAreExpectedOrNot)
{
    EXPECT_EQ(ShapeOf(*presentation_, 2, 1)->Name(), u"B\u00F6x 2 1");
    presentation_->ExpectHits();
    EXPECT_EQ(ShapeOf(*presentation_, 2, 1)->Name(), u"B\u00F6x 2 1");

    presentation_->Close();
    const auto other = deck_.Open();
    other->ExpectHits();
    EXPECT_EQ(ShapeOf(*other, 2, 1)->Name(), u"B\u00F6x 2 1");
    ReplaceInShape(*other, 2, 1, u"cat", u"dog");
    EXPECT_EQ(ShapeOf(*other, 2, 1)->Name(), u"B\u00F6x 2 1");
}

}  // namespace
}  // namespace tessarine::test
