#include "office/builtin/shapes/ShapeTreePart.h"

#include "DeckOnDisk.h"
#include "files/RandomAccessFile.h"

namespace tessarine::test
{
namespace
{

/// The first slide of a deck as the engine holds it.
class SlideInMemory
{
public:
    explicit SlideInMemory(const Deck& deck)
        : bytes_(deck.Bytes()),
          package(BytesInMemory(std::as_bytes(std::span(bytes_)))),
          part(package, package.Find(slide1).value())
    {
    }

private:
    std::string bytes_;

public:
    builtin::Package package;
    builtin::ShapeTreePart part;
};

const Deck linkedText = Deck().Slide(TextBox(Paragraph(u"see ", TextRun(u"here").Click(LinkTo(u"http://a/"))),
                                             Paragraph(TextRun(u"there").Click(LinkTo(u"http://b/")))),
                                     TextBox(Paragraph(TextRun(u"end").Click(LinkTo(u"http://c/")))));

TEST(ShapeTreePart, LooksAtLinksWithoutHandingEditsOver)
{
    SlideInMemory slide(linkedText);

    slide.part.ReplaceText(0, 0, 3, u"look");
    ASSERT_EQ(slide.part.HyperlinkIndices().size(), 3u);
    EXPECT_EQ(slide.part.HyperlinkAddress(1), u"http://b/");
    EXPECT_FALSE(slide.package.IsChanged());

    slide.part.Flush();
    EXPECT_TRUE(slide.package.IsChanged());
}

TEST(ShapeTreePart, LeavesTheIndexOfALinkThatItsTextTookAlong)
{
    SlideInMemory slide(linkedText);

    slide.part.ReplaceText(0, 4, 5, u"");  // "here" and the paragraph's end

    EXPECT_THAT(slide.part.HyperlinkIndices(), testing::ElementsAre(1, 2));
    EXPECT_THROW(slide.part.HyperlinkAddress(0), Failure);
    EXPECT_EQ(slide.part.HyperlinkAddress(1), u"http://b/");
    slide.part.PutHyperlinkAddress(1, u"http://b2/");
    slide.part.Flush();
    EXPECT_EQ(slide.part.HyperlinkAddress(1), u"http://b2/");
    EXPECT_EQ(slide.part.HyperlinkAddress(2), u"http://c/");
}

TEST(ShapeTreePart, HandsEditsOfTextsAndLinksOverTogether)
{
    SlideInMemory slide(linkedText);

    slide.part.PutHyperlinkAddress(0, u"C:\\a.docx");
    slide.part.ReplaceText(0, 4, 4, u"that");
    slide.part.PutHyperlinkAddress(1, u"");
    EXPECT_EQ(slide.package.ReadXml(slide.part.entry()), linkedText.EntryBytes(slide1));
    slide.part.Flush();

    const std::string xml = slide.package.ReadXml(slide.part.entry());
    EXPECT_NE(xml.find("<a:t>that</a:t>"), std::string::npos);
    EXPECT_NE(xml.find("action=\"ppaction://hlinkfile\""), std::string::npos);
    EXPECT_EQ(slide.part.HyperlinkAddress(0), u"C:\\a.docx");
    EXPECT_THROW(slide.part.HyperlinkAddress(1), Failure);
    EXPECT_EQ(slide.part.HyperlinkAddress(2), u"http://c/");
}

TEST(ShapeTreeEdits, OfWhichOneFailsHalfWayAreNeverSaved)
{
    const DeckOnDisk file(linkedText);
    SlideInMemory slide(linkedText);
    builtin::ShapeTreeEdits edits(slide.package, slide.package.Find(slide1).value(), slide.part);
    slide.part.ReplaceText(0, 0, 3, u"look");

    EXPECT_THROW(edits.Try([] { throw Failure(FailureNumber::FileCorrupt, u"a run is not what it was"); }), Failure);
    slide.part.Flush();

    EXPECT_THAT(RaisedBy([&] { slide.package.Save(file.Path()); }),
                FailsWith(FailureNumber::FileCorrupt,
                          "The file was not saved, because a change would have damaged ppt/slides/slide1.xml: a run"));
    EXPECT_EQ(file.Bytes(), linkedText.Bytes());
}

TEST(ShapeTreeEdits, OfWhichOneIsRefusedAreSaved)
{
    const DeckOnDisk file(linkedText);
    SlideInMemory slide(linkedText);
    slide.part.ReplaceText(0, 0, 3, u"look");

    EXPECT_THROW(slide.part.PutHyperlinkAddress(0, String(3000, u'x')), Failure);
    slide.part.Flush();
    slide.package.Save(file.Path());

    EXPECT_NE(file.Bytes(), linkedText.Bytes());
}

}  // namespace
}  // namespace tessarine::test
