#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

std::string F(const std::string& type, const std::string& text, const std::string& properties = {})
{
    return "<a:fld id=\"{B6F15528-21DE-4FAA-801E-634DDDAF4B2B}\" type=\"" + type + "\">" +
           (properties.empty() ? "" : "<a:rPr " + properties + "/>") + "<a:t>" + text + "</a:t></a:fld>";
}

class VolatileField : public testing::TestWithParam<const char*>
{
};

TEST_P(VolatileField, IsNeitherFoundNorReplaced)
{
    const std::string paragraphs = P(R("a12 ") + F(GetParam(), "12") + R(" 12"));
    const TextBoxOnDisk box(paragraphs);

    EXPECT_EQ(box.Find(u"12"), 2);
    EXPECT_EQ(box.Find(u"12", {.after = 2}), 8) << "its text counts, but is no hit";
    EXPECT_EQ(box.Find(u" 12"), 7);
    EXPECT_EQ(box.Find(u"2 1"), 0);
    EXPECT_EQ(box.CountAll(u"12"), 2);
    EXPECT_EQ(box.ReplaceAll(u"12", u"x"), 2);

    EXPECT_EQ(box.Paragraphs(), P(R("ax ") + F(GetParam(), "12") + R(" x")));
}

INSTANTIATE_TEST_SUITE_P(Types, VolatileField,
                         testing::Values("slidenum", "datetime", "datetime1", "datetime13", "datetimeFigureOut"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST(VolatileFields, MayStandBesideAHit)
{
    EXPECT_EQ(TextBoxOnDisk(P(R("Page") + F("slidenum", "1") + R("of"))).Find(u"Page"), 1);
    EXPECT_EQ(TextBoxOnDisk(P(R("Page") + F("slidenum", "1") + R("of"))).Find(u"of"), 6);
    EXPECT_EQ(TextBoxOnDisk(P(R("Page") + F("slidenum", "1"))).Find(u"Page", {.wholeWords = true}), 0);
}

TEST(VolatileFields, StayWhereTheyAreWhenTextAroundThemIsReplaced)
{
    const TextBoxOnDisk box(P(R("one ") + F("slidenum", "1") + R(" two 1")));

    box.File().Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"one", u"a longer text\nof more lines");
        ReplaceInShape(presentation, 1, 1, u"two ", u"");
        ReplaceInShape(presentation, 1, 1, u"1", u"2");
    });

    EXPECT_EQ(box.Paragraphs(), P(R("a longer text")) + P(R("of more lines") + R(" ") + F("slidenum", "1") + R(" 2")));
}

TEST(VolatileFields, WithoutTextDoNotPartAHitAndStay)
{
    const std::string empty = "<a:fld id=\"{1}\" type=\"slidenum\"><a:rPr/></a:fld>";
    const TextBoxOnDisk box(P(R("Fab") + empty + R("rikam")));

    box.Replace(u"Fabrikam", u"x");

    EXPECT_EQ(box.Paragraphs(), P(R("x") + empty));
}

TEST(OtherFields, AreOrdinaryTextAndBecomeARunWhenTouched)
{
    const TextBoxOnDisk box(P(R("a ") + F("footer", "see Fabrikam", bold) + R(" b")));

    EXPECT_EQ(box.Replace(u"Fabrikam", u"x"), 7);

    EXPECT_EQ(box.Paragraphs(), P(R("a ") + R("see x", bold) + R(" b")));
}

TEST(OtherFields, BecomeARunWhenAHitEndsInThem)
{
    const TextBoxOnDisk box(P(R("Fab") + F("header", "rikam &amp; Co", bold)));

    box.Replace(u"Fabrikam", u"x");

    EXPECT_EQ(box.Paragraphs(), P(R("x") + R(" &amp; Co", bold)));
}

TEST(OtherFields, GoWhenAHitCoversThem)
{
    const TextBoxOnDisk box(P(R("Fa") + F("custom", "bri", bold) + R("kam")));

    box.Replace(u"Fabrikam", u"x");

    EXPECT_EQ(box.Paragraphs(), P(R("x")));
}

TEST(OtherFields, StayFieldsWhenTheyAreNotTouched)
{
    const TextBoxOnDisk box(P(F("footer", "Fabrikam") + R(" one")));

    box.Replace(u"one", u"two");

    EXPECT_EQ(box.Paragraphs(), P(F("footer", "Fabrikam") + R(" two")));
}

TEST(OtherFields, WithoutATypeAreOrdinaryTextToo)
{
    const TextBoxOnDisk box(P("<a:fld id=\"{1}\"><a:t>Fabrikam</a:t></a:fld>"));

    EXPECT_EQ(box.ReplaceAll(u"Fabrikam", u"x"), 1);

    EXPECT_EQ(box.Paragraphs(), P(R("x")));
}

const std::string equation =
    "<mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\"><mc:Choice "
    "xmlns:a14=\"http://schemas.microsoft.com/office/drawing/2010/main\" Requires=\"a14\"><a14:m/></mc:Choice>"
    "<mc:Fallback><a:r><a:t>Fabrikam</a:t></a:r></mc:Fallback></mc:AlternateContent>";

class OpaqueContent : public testing::TestWithParam<std::string>
{
};

TEST_P(OpaqueContent, HasNoLengthIsNotSearchedAndPartsAHit)
{
    const TextBoxOnDisk box(P(R("Fab") + GetParam() + R("rikam")));

    EXPECT_EQ(box.Find(u"rikam"), 4);
    EXPECT_EQ(box.Find(u"Fabrikam"), 0);
}

TEST_P(OpaqueContent, StaysWhenTextBesideItIsReplaced)
{
    const TextBoxOnDisk box(P(R("one") + GetParam() + R("two", bold)));

    EXPECT_EQ(box.ReplaceAll(u"o", u"0"), 2);
    EXPECT_EQ(box.ReplaceAll(u"tw0", u""), 1);
    EXPECT_EQ(box.ReplaceAll(u"0ne", u"a\nb"), 1);

    EXPECT_EQ(box.Paragraphs(), P(R("a")) + P(R("b") + GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, OpaqueContent,
                         testing::Values(equation, "<x:y xmlns:x=\"http://example.com/x\"><x:t>Fabrikam</x:t></x:y>"),
                         [](const auto& tested) { return tested.index == 0 ? "Equation" : "UnknownElement"; });

}  // namespace
}  // namespace tessarine::test
