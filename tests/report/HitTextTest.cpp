#include "report/HitText.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

Hit HitAt(const HitPlace& place, std::int32_t paragraph = 0)
{
    Hit hit;
    hit.place = std::make_shared<const HitPlace>(place);
    hit.paragraph = paragraph;
    return hit;
}

std::string PlaceOf(const HitPlace& place, std::int32_t paragraph = 0)
{
    return ToUtf8(PlaceText(HitAt(place, paragraph)));
}

struct PlaceCase {
    const char* name;
    HitPlace place;
    std::int32_t paragraph;
    const char* text;
};

class PlaceTexts : public testing::TestWithParam<PlaceCase>
{
};

TEST_P(PlaceTexts, GoFromTheOutsideToTheInside)
{
    EXPECT_EQ(PlaceOf(GetParam().place, GetParam().paragraph), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Locations, PlaceTexts,
    testing::Values(
        PlaceCase{
            "Slides",
            {.location = Location::Slides, .slide = 3, .slideTitle = u"Plan", .shape = 1, .shapeName = u"Title 1"},
            1,
            "slide 3 \"Plan\", shape 1 \"Title 1\", paragraph 1"},
        PlaceCase{"HyperlinkAddresses",
                  {.location = Location::HyperlinkAddresses, .slide = 3, .slideTitle = u"Plan", .hyperlink = 2},
                  0,
                  "slide 3 \"Plan\", hyperlink 2"},
        PlaceCase{"ShapesAndTextboxes",
                  {.location = Location::ShapesAndTextboxes, .slide = 12, .shape = 2, .shapeName = u"Text 1"},
                  10,
                  "slide 12, shape 2 \"Text 1\", paragraph 10"},
        PlaceCase{"Header",
                  {.location = Location::Header, .slide = 1, .headerFooter = HitPlace::HeaderFooter::Header},
                  0,
                  "slide 1, header"},
        PlaceCase{"Footer",
                  {.location = Location::Footer,
                   .slide = 1,
                   .slideTitle = u"Plan",
                   .headerFooter = HitPlace::HeaderFooter::Footer},
                  0,
                  "slide 1 \"Plan\", footer"},
        PlaceCase{"BuiltinProperies",
                  {.location = Location::BuiltinProperies, .property = u"Title"},
                  0,
                  "property \"Title\""},
        PlaceCase{"CustomProperties",
                  {.location = Location::CustomProperties, .property = u"Client"},
                  0,
                  "custom property \"Client\""},
        PlaceCase{"Notes",
                  {.location = Location::Notes, .slide = 3, .slideTitle = u"Plan", .shape = 2, .shapeName = u"Notes 2"},
                  4,
                  "notes of slide 3 \"Plan\", shape 2 \"Notes 2\", paragraph 4"},
        PlaceCase{"Links",
                  {.location = Location::Links, .slide = 3, .shape = 4, .shapeName = u"Object 3"},
                  0,
                  "slide 3, shape 4 \"Object 3\", source"},
        PlaceCase{"SlideMasterPerSlide",
                  {.location = Location::SlideMasterPerSlide, .design = u"Office", .shape = 1, .shapeName = u"Title"},
                  1,
                  "slide master \"Office\", shape 1 \"Title\", paragraph 1"},
        PlaceCase{"SlideMasterPerPresentation",
                  {.location = Location::SlideMasterPerPresentation, .shape = 1},
                  1,
                  "slide master, shape 1, paragraph 1"},
        PlaceCase{"TitleMaster",
                  {.location = Location::TitleMaster, .design = u"Office", .shape = 1},
                  1,
                  "title master \"Office\", shape 1, paragraph 1"},
        PlaceCase{"HandoutMaster",
                  {.location = Location::HandoutMaster, .shape = 5, .shapeName = u"Box"},
                  1,
                  "handout master, shape 5 \"Box\", paragraph 1"},
        PlaceCase{"HeaderOfHandoutMaster",
                  {.location = Location::HandoutMaster, .headerFooter = HitPlace::HeaderFooter::Header},
                  0,
                  "notes master, header"},
        PlaceCase{"NotesMaster",
                  {.location = Location::NotesMaster, .headerFooter = HitPlace::HeaderFooter::Header},
                  0,
                  "notes master, header"}),
    [](const auto& row) { return row.param.name; });

TEST(PlaceText, LeavesOutWhatCannotBeTold)
{
    EXPECT_EQ(PlaceOf({.location = Location::ShapesAndTextboxes}), "slide");
    EXPECT_EQ(PlaceOf({.location = Location::Notes}), "notes of slide");
    EXPECT_EQ(PlaceOf({.location = Location::BuiltinProperies}), "property");
    EXPECT_EQ(PlaceOf({.location = Location::ShapesAndTextboxes, .slide = 2, .shapeName = u"Box"}),
              "slide 2, shape \"Box\"");
}

TEST(PlaceText, CutsLongNamesBetweenCharacters)
{
    const String forty(40, u'x');
    String emoji;
    for (int count = 0; count < 41; ++count)
        emoji += u"😀";

    EXPECT_EQ(PlaceText(HitAt({.slide = 1, .slideTitle = forty})), u"slide 1 \"" + forty + u"\"");
    EXPECT_EQ(PlaceText(HitAt({.slide = 1, .slideTitle = forty + u"y"})), u"slide 1 \"" + forty + u"...\"");
    EXPECT_EQ(PlaceText(HitAt({.slide = 1, .slideTitle = emoji})), u"slide 1 \"" + emoji.substr(2) + u"...\"");
}

TEST(PlaceText, KeepsNamesOnOneLineAndHarmless)
{
    EXPECT_EQ(PlaceOf({.slide = 1, .slideTitle = u"a\vb", .shape = 2, .shapeName = u"\x1B[2J\u202Ex"}),
              "slide 1 \"a b\", shape 2 \"\\x1B[2J\\u202Ex\"");
}

TEST(RemarkText, SaysWhatIsUnusual)
{
    Hit hit = HitAt({});

    EXPECT_EQ(RemarkText(hit, false), u"");
    EXPECT_EQ(RemarkText(hit, true), u"stays as it is");
    hit.isCounted = false;
    EXPECT_EQ(RemarkText(hit, false), u"not counted");
    EXPECT_EQ(RemarkText(hit, true), u"not counted, stays as it is");
    hit.becomes = u"";
    EXPECT_EQ(RemarkText(hit, true), u"not counted");
    hit.isCounted = true;
    EXPECT_EQ(RemarkText(hit, true), u"");
}

TEST(LineOf, ShowsWhereTheParagraphGoesOn)
{
    Hit hit = HitAt({});
    hit.before = u"ask ";
    hit.text = u"FABRIKAM";
    hit.after = u" about";

    const HitLine whole = LineOf(hit, u"Fabrikam");
    hit.isCutBefore = hit.isCutAfter = true;
    const HitLine cut = LineOf(hit, u"Fabrikam");

    EXPECT_EQ(whole.before + u"|" + whole.found + u"|" + whole.after, u"ask |FABRIKAM| about");
    EXPECT_EQ(cut.before + u"|" + cut.found + u"|" + cut.after, u"...ask |FABRIKAM| about...");
    EXPECT_EQ(whole.becomes, std::nullopt);
}

TEST(LineOf, TakesTheTextOfThePairForAHitWithoutItsOwn)
{
    EXPECT_EQ(LineOf(HitAt({}), u"Fab\x1Brikam").found, u"Fab\\x1Brikam");
}

TEST(LineOf, MakesAllPartsVisibleOnOneLine)
{
    Hit hit = HitAt({});
    hit.before = u"a\v\x1B";
    hit.text = u"b\tc";
    hit.becomes = u"\u202Ed\n";
    hit.after = u"\r\ne";

    const HitLine line = LineOf(hit, u"b\tc");

    EXPECT_EQ(line.before, u"a \\x1B");
    EXPECT_EQ(line.found, u"b c");
    EXPECT_EQ(line.becomes, u"\\u202Ed ");
    EXPECT_EQ(line.after, u" e");
}

TEST(OneLineText, MakesLineEndsAndTabsBlanks)
{
    EXPECT_EQ(OneLineText(u"a\tb\nc\vd\fe\rf\r\ng\x85h\u2028i\u2029j"), u"a b c d e f g h i j");
    EXPECT_EQ(OneLineText(u"\r"), u" ");
}

TEST(OneLineText, KeepsOtherScriptsAndEmoji)
{
    EXPECT_EQ(OneLineText(u"שלום مرحبا 中文 😀"), u"שלום مرحبا 中文 😀");
}

}  // namespace
}  // namespace tessarine
