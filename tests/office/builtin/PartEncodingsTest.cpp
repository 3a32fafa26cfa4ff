#include <map>
#include <utility>

#include "DeckOnDisk.h"
#include "support/Fixtures.h"
#include "support/PackageDress.h"

namespace tessarine::test
{
namespace
{

Deck TwoRuns()
{
    return Deck().Slide(Title(u"\u00C4 Fabrikam \U0001F600"), TextBox(Paragraph(TextRun(u"Fab").Bold(), u"rikam")));
}

/// The slide's bytes after "Fabrikam" on it became "Contoso \u732B".
std::string SlideAfterReplacing(const Deck& before)
{
    const DeckOnDisk deck(before);
    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso \u732B");
        ReplaceInShape(presentation, 1, 2, u"Fabrikam", u"Contoso \u732B");
    });
    EXPECT_TRUE(OnlyTheTextDiffers(before, deck.Package(), {{u"Fabrikam", u"Contoso \u732B"}}));
    return deck.Package().Entry(slide1).bytes;
}

/// What that is for a part of the usual form.
std::string PlainAfterReplacing()
{
    std::string slide = TwoRuns().EntryBytes(slide1);
    slide = Replaced(slide, "\u00C4 Fabrikam", "\u00C4 Contoso \u732B");
    slide = Replaced(slide, ">Fab<", ">Contoso \u732B<");
    return Replaced(slide, "<a:r><a:t>rikam</a:t></a:r>", "");
}

TEST(EditOfAPart, InUtf8IsMadeInPlace)
{
    EXPECT_EQ(SlideAfterReplacing(TwoRuns()), PlainAfterReplacing());
}

TEST(EditOfAPart, KeepsAByteOrderMark)
{
    EXPECT_EQ(SlideAfterReplacing(TwoRuns().Bom(slide1)), WithByteOrderMark(PlainAfterReplacing()));
}

TEST(EditOfAPart, InUtf16StaysInUtf16)
{
    EXPECT_EQ(SlideAfterReplacing(TwoRuns().Utf16(slide1)), ToUtf16Part(PlainAfterReplacing()));
}

TEST(EditOfAPart, InBigEndianUtf16StaysSo)
{
    const auto swapped = [](std::string bytes) {
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            std::swap(bytes[i], bytes[i + 1]);
        return bytes;
    };
    const Deck before = TwoRuns().Entry(slide1, swapped(ToUtf16Part(TwoRuns().EntryBytes(slide1))));
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso \u732B");
        ReplaceInShape(presentation, 1, 2, u"Fabrikam", u"Contoso \u732B");
    });

    EXPECT_EQ(deck.Package().Entry(slide1).bytes, swapped(ToUtf16Part(PlainAfterReplacing())));
}

TEST(EditOfAPart, WithoutDeclarationIsMadeInPlace)
{
    const auto without = [](const std::string& xml) { return xml.substr(xml.find("<p:sld")); };

    EXPECT_EQ(SlideAfterReplacing(TwoRuns().Entry(slide1, without(TwoRuns().EntryBytes(slide1)))),
              without(PlainAfterReplacing()));
}

TEST(EditOfAPart, InStrictFormStaysStrict)
{
    EXPECT_EQ(SlideAfterReplacing(TwoRuns().Strict()), ToStrict(PlainAfterReplacing()));
}

struct Prefixes {
    const char* name;
    std::map<std::string, std::string> prefixes;
};

void PrintTo(const Prefixes& prefixes, std::ostream* out)
{
    *out << prefixes.name;
}

class PrefixesOfAPart : public testing::TestWithParam<Prefixes>
{
};

TEST_P(PrefixesOfAPart, DoNotMatterAndAreKept)
{
    EXPECT_EQ(SlideAfterReplacing(TwoRuns().Prefixes(GetParam().prefixes)),
              WithPrefixes(PlainAfterReplacing(), GetParam().prefixes));
}

TEST_P(PrefixesOfAPart, AreThoseOfNewElements)
{
    const DeckOnDisk deck(TwoRuns().Prefixes(GetParam().prefixes));

    deck.Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 2, u"Fabrikam", u"one\ntwo\vthree");
    });

    EXPECT_EQ(
        deck.Package().Entry(slide1).bytes,
        WithPrefixes(Replaced(TwoRuns().EntryBytes(slide1), "<a:t>Fab</a:t></a:r><a:r><a:t>rikam</a:t></a:r></a:p>",
                              "<a:t>one</a:t></a:r></a:p><a:p><a:r><a:rPr b=\"1\"/><a:t>two</a:t></a:r><a:br>"
                              "<a:rPr b=\"1\"/></a:br><a:r><a:rPr b=\"1\"/><a:t>three</a:t></a:r></a:p>"),
                     GetParam().prefixes));
}

INSTANTIATE_TEST_SUITE_P(Names, PrefixesOfAPart,
                         testing::Values(Prefixes{"Numbered", {{"p", "ns0"}, {"a", "ns1"}, {"r", "ns2"}}},
                                         Prefixes{"DefaultForSlides", {{"p", ""}}},
                                         Prefixes{"DefaultForDrawings", {{"a", ""}}},
                                         Prefixes{"Exchanged", {{"p", "a"}, {"a", "p"}}},
                                         Prefixes{"NonAscii", {{"a", "\u00E4"}}}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(EditOfAPart, InOtherCustomsOfWritingKeepsThem)
{
    const Deck before = fixtures::PrettyPrinted();
    const DeckOnDisk deck(before);

    deck.Change(
        [](powerpoint::Presentation& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    EXPECT_TRUE(OnlyTheTextDiffers(before, deck.Package(), {{u"Fabrikam", u"Contoso"}}));
    EXPECT_NE(deck.Package().Entry(slide1).bytes, PackageReader(before).Entry(slide1).bytes);
}

}  // namespace
}  // namespace tessarine::test
