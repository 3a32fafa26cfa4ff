#include <string>
#include <vector>

#include "engine/TextHits.h"
#include "engine/TextRangeWalk.h"
#include "EngineTest.h"
#include "support/WarningRecorder.h"

namespace tessarine
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// A hit in one line: "pair location place | before[text>becomes]after", with "..." where a paragraph is cut.
std::string LineOf(const Hit& hit)
{
    const HitPlace& place = *hit.place;
    std::string line = std::to_string(place.pair) + ' ' + RowOf(place.location).name;
    const auto number = [&](const char* word, std::int32_t value, const String& name) {
        if (value > 0)
            line += std::string(" ") + word + std::to_string(value) + (name.empty() ? "" : " " + ToUtf8(name));
    };
    number("slide", place.slide, place.slideTitle);
    if (!place.design.empty())
        line += " design " + ToUtf8(place.design);
    if (!place.property.empty())
        line += " property " + ToUtf8(place.property);
    if (place.headerFooter != HitPlace::HeaderFooter::None)
        line += place.headerFooter == HitPlace::HeaderFooter::Header ? " header" : " footer";
    number("link", place.hyperlink, {});
    number("shape", place.shape, place.shapeName);
    number("paragraph", hit.paragraph, {});
    line += " at " + std::to_string(hit.position) + '+' + std::to_string(hit.length) + " | ";
    line += (hit.isCutBefore ? "..." : "") + ToUtf8(hit.before) + '[' + ToUtf8(hit.text) +
            (hit.becomes ? ">" + ToUtf8(*hit.becomes) : "") + ']' + ToUtf8(hit.after) + (hit.isCutAfter ? "..." : "");
    return line + (hit.isCounted ? "" : " (not counted)");
}

class HitsTest : public EngineTest
{
protected:
    HitsTest()
    {
        engine.HitFound = [this](const Hit& hit) {
            hits_.push_back(hit);
            lines_.push_back(LineOf(hit));
        };
        engine.HitContext = 60;
    }

    /// Takes one pair through one location, in the way of a run.
    std::int32_t Search(Location location, const ::tessarine::Search& search)
    {
        Look(search);
        const auto item = AddItem(search.find, search.with, {location});
        item->OptionSetting->MatchCase = search.matchCase;
        item->OptionSetting->MatchWholeWord = search.wholeWord;
        return NotNull(ProcessFile())->Item(1)->Count(location);
    }

    std::vector<Hit> hits_;
    std::vector<std::string> lines_;
    String addressOnDisk_;  // what a hyperlink reads as once it was written; empty for what was put
};

TEST_F(HitsTest, TellSlideTitleShapeParagraphAndPosition)
{
    Open(
        {.slides = {{}, {.shapes = {AutoShape(u"no"), AutoShape(u"first\ra cat here\rlast")}, .title = u"Our\vpets"}}});
    content().slides[1].shapes[1].name = u"Box 7";

    EXPECT_EQ(Search(Location::ShapesAndTextboxes, {.find = u"cat", .findOnly = true}), 1);

    EXPECT_THAT(lines_, ElementsAre("1 shapes slide2 Our pets shape2 Box 7 paragraph2 at 3+3 | a [cat] here"));
}

TEST_F(HitsTest, TellOldAndNewTextOfAReplacement)
{
    Open({.slides = {{.shapes = {Placeholder(u"Cat and cat")}}}});

    EXPECT_EQ(Search(Location::Slides, {.find = u"cat", .with = u"hound"}), 2);

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 shape1 paragraph1 at 1+3 | [Cat>hound] and cat",
                                    "1 slides slide1 shape1 paragraph1 at 11+3 | hound and [cat>hound]"));
}

TEST_F(HitsTest, CountParagraphsAsAReplacementDividesThem)
{
    Open({.slides = {{.shapes = {Placeholder(u"x-x-x")}}}});

    EXPECT_EQ(Search(Location::Slides, {.find = u"-", .with = u"\r"}), 2);

    ASSERT_EQ(hits_.size(), 2U);
    EXPECT_EQ(hits_[0].paragraph, 1);
    EXPECT_EQ(hits_[1].paragraph, 2);
    EXPECT_EQ(hits_[1].position, 2);
    EXPECT_EQ(hits_[1].becomes, u"\r");
    EXPECT_EQ(content().slides[0].shapes[0].text, u"x\rx\rx");
}

TEST_F(HitsTest, EndContextWithItsParagraph)
{
    Open({.slides = {{.shapes = {Placeholder(u"one\rtwo cat\rthree")}}}});

    Search(Location::Slides, {.find = u"cat", .findOnly = true});

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 shape1 paragraph2 at 5+3 | two [cat]"));
}

TEST_F(HitsTest, MayReachOverAParagraphBreak)
{
    Open({.slides = {{.shapes = {Placeholder(u"a\rb c\rd")}}}});

    Search(Location::Slides, {.find = u"a\rb", .findOnly = true});

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 shape1 paragraph1 at 1+3 | [a\rb] c"));
}

TEST_F(HitsTest, CutContextAtTheLengthAskedForAndNeverAPair)
{
    engine.HitContext = 3;
    Open({.slides = {
              {.shapes = {Placeholder(u"123456cat123456"), Placeholder(u"x\U0001F408ab\u0020cat \U0001F408\U0001F408"),
                          Placeholder(u"123cat123")}}}});

    Search(Location::Slides, {.find = u"cat", .findOnly = true});

    ASSERT_EQ(hits_.size(), 3U);
    EXPECT_EQ(lines_[0], "1 slides slide1 shape1 paragraph1 at 7+3 | ...456[cat]123...");
    EXPECT_EQ(hits_[1].before, u"ab ");
    EXPECT_EQ(hits_[1].after, u" \U0001F408");
    EXPECT_TRUE(hits_[1].isCutAfter);
    EXPECT_FALSE(hits_[2].isCutBefore);
    EXPECT_FALSE(hits_[2].isCutAfter);

    engine.HitContext = 4;
    hits_.clear();
    Search(Location::Slides, {.find = u"cat", .findOnly = true});
    EXPECT_EQ(hits_.at(1).before, u"ab ");
    EXPECT_TRUE(hits_.at(1).isCutBefore);
    EXPECT_EQ(hits_.at(1).after, u" \U0001F408");
}

TEST_F(HitsTest, TellNoContextWhenNoneIsAskedFor)
{
    engine.HitContext = 0;
    Open({.slides = {{.shapes = {Placeholder(u"a cat b")}}}});

    Search(Location::Slides, {.find = u"cat", .findOnly = true});

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 shape1 paragraph1 at 3+3 | ...[cat]..."));
}

TEST_F(HitsTest, OfAFindWithoutCountAreTheFirstOfEachText)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat cat"), Placeholder(u"cat")}, .hyperlinks = {u"cat/cat"}}}});

    Search(Location::Slides, {.find = u"cat", .findOnly = true, .countAll = false});
    EXPECT_EQ(hits_.size(), 2U);

    hits_.clear();
    engine.mItems = nullptr;
    EXPECT_EQ(Search(Location::HyperlinkAddresses, {.find = u"cat", .findOnly = true, .countAll = false}), 1);
    EXPECT_EQ(hits_.size(), 1U);
}

TEST_F(HitsTest, OfAReplacementWithoutCountAreAllThatAreReplaced)
{
    Open({.slides = {{.hyperlinks = {u"cat/cat"}}}});

    EXPECT_EQ(Search(Location::HyperlinkAddresses, {.find = u"cat", .with = u"dog", .countAll = false}), 1);

    EXPECT_THAT(lines_, ElementsAre("1 hyperlinks slide1 link1 at 1+3 | [cat>dog]/cat",
                                    "1 hyperlinks slide1 link1 at 5+3 | cat/[cat>dog]"));
}

TEST_F(HitsTest, OfHyperlinksHaveTheirNumberOnTheSlide)
{
    Open({.slides = {{.hyperlinks = {u"http://dog"}},
                     {.hyperlinks = {u"http://dog", u"http://cat/a"}, .title = u"Links"}}});

    Search(Location::HyperlinkAddresses, {.find = u"cat", .with = u"cow"});

    EXPECT_THAT(lines_, ElementsAre("1 hyperlinks slide2 Links link2 at 8+3 | http://[cat>cow]/a"));
}

TEST_F(HitsTest, OfWholeWordsLeaveOutOthers)
{
    Open({.slides = {{.hyperlinks = {u"cats cat/concat"}}}});

    Search(Location::HyperlinkAddresses, {.find = u"CAT", .wholeWord = true, .findOnly = true});

    EXPECT_THAT(lines_, ElementsAre("1 hyperlinks slide1 link1 at 6+3 | cats [cat]/concat"));
}

TEST_F(HitsTest, OfAFooterAreToldButNotCounted)
{
    Open({.slides = {{.footer = std::nullopt}, {.footer = u"the cat"}}});

    EXPECT_EQ(Search(Location::Footer, {.find = u"cat", .with = u"dog"}), 0);

    EXPECT_THAT(lines_, ElementsAre("1 footer slide2 footer at 5+3 | the [cat>dog] (not counted)"));
    EXPECT_EQ(content().slides[1].footer, u"the dog");
}

TEST_F(HitsTest, OfNotesHaveTheNumberOfTheirSlide)
{
    Open({.slides = {{}, {.notes = {Placeholder(u"say cat")}, .title = u"Two"}}});

    Search(Location::Notes, {.find = u"cat", .findOnly = true});

    EXPECT_THAT(lines_, ElementsAre("1 notes slide2 Two shape1 paragraph1 at 5+3 | say [cat]"));
}

TEST_F(HitsTest, OfMastersNameTheirDesign)
{
    const FakeMaster master{.shapes = {Placeholder(u"cat")}};
    Open({.slides = {{.design = 1}},
          .designs = {{.name = u"Plain"}, {.name = u"Blue", .slideMaster = master, .titleMaster = master}}});
    for (const Location location :
         {Location::SlideMasterPerSlide, Location::SlideMasterPerPresentation, Location::TitleMaster}) {
        engine.mItems = nullptr;
        Search(location, {.find = u"cat", .findOnly = true});
    }

    EXPECT_THAT(lines_, ElementsAre("1 master-per-slide design Blue shape1 paragraph1 at 1+3 | [cat]",
                                    "1 master-per-presentation design Blue shape1 paragraph1 at 1+3 | [cat]",
                                    "1 title-master design Blue shape1 paragraph1 at 1+3 | [cat]"));
}

TEST_F(HitsTest, OfNotesAndHandoutMasterTellHeaderAndFooter)
{
    Open({.notesMaster = {.shapes = {Placeholder(u"cat")}, .header = u"cat", .footer = u"a cat"},
          .handoutMaster = {.shapes = {TextBox(u"cat"), TextBox(u"cat")}}});

    EXPECT_EQ(Search(Location::NotesMaster, {.find = u"cat", .findOnly = true}), 3);
    EXPECT_THAT(lines_, ElementsAre("1 notes-master shape1 paragraph1 at 1+3 | [cat]",
                                    "1 notes-master header at 1+3 | [cat]", "1 notes-master footer at 3+3 | a [cat]"));

    engine.mItems = nullptr;
    EXPECT_EQ(Search(Location::HandoutMaster, {.find = u"cat", .findOnly = true}), 4);
    EXPECT_EQ(lines_.size(), 7U);
}

TEST_F(HitsTest, OfPropertiesHaveTheirNames)
{
    Open({.builtInProperties = {{.name = u"Title", .value = String(u"a cat")}},
          .customProperties = {{.name = u"Pet", .value = String(u"cat")}}});

    Search(Location::BuiltinProperies, {.find = u"cat", .with = u"dog"});
    engine.mItems = nullptr;
    Search(Location::CustomProperties, {.find = u"cat", .with = u"dog"});

    EXPECT_THAT(lines_, ElementsAre("1 builtin-properties property Title at 3+3 | a [cat>dog]",
                                    "1 custom-properties property Pet at 1+3 | [cat>dog]"));
}

TEST_F(HitsTest, OfAPropertyThatCannotBeChangedBecomeNothing)
{
    Open({.builtInProperties = {{.name = u"Application name", .value = String(u"cat"), .writeFailure = 5}}});

    EXPECT_EQ(Search(Location::BuiltinProperies, {.find = u"cat", .with = u"dog"}), 1);

    ASSERT_EQ(hits_.size(), 1U);
    EXPECT_EQ(hits_[0].text, u"cat");
    EXPECT_EQ(hits_[0].becomes, std::nullopt);
}

TEST_F(HitsTest, OfAPropertyThatCannotBeReadAreNotThoseOfTheOneBefore)
{
    Open({.builtInProperties = {{.name = u"Title", .value = String(u"cat")}, {.name = u"Subject", .readFailure = 5}}});

    // The count is that of the property before, as always; nothing was found there.
    EXPECT_EQ(Search(Location::BuiltinProperies, {.find = u"cat", .findOnly = true}), 2);

    EXPECT_THAT(lines_, ElementsAre("1 builtin-properties property Title at 1+3 | [cat]"));
}

TEST_F(HitsTest, OfAValueInAFormOfItsOwnTellWhatStandsThere)
{
    Open({.slides = {{.hyperlinks = {u"http://cat/cat.htm"}}}});
    script.On("Hyperlink.Address =", [this] {
        // As a file escapes the blank.
        addressOnDisk_ = u"http://a%20dog/a%20dog.htm";
    });
    script.On("Hyperlink.Address", [this] {
        if (!addressOnDisk_.empty())
            content().slides[0].hyperlinks[0] = addressOnDisk_;
    });

    Search(Location::HyperlinkAddresses, {.find = u"cat", .with = u"a dog"});

    EXPECT_THAT(lines_, ElementsAre("1 hyperlinks slide1 link1 at 8+3 | http://[cat>a%20dog]/cat.htm",
                                    "1 hyperlinks slide1 link1 at 12+3 | http://cat/[cat>a%20dog].htm"));
}

TEST_F(HitsTest, OfAValueThatIsReadOtherwiseTellWhatWasAskedFor)
{
    Open({.slides = {{.hyperlinks = {u"cat/cat"}}}});
    script.On("Hyperlink.Address =", [this] { addressOnDisk_ = u"something else"; });
    script.On("Hyperlink.Address", [this] {
        if (!addressOnDisk_.empty())
            content().slides[0].hyperlinks[0] = addressOnDisk_;
    });

    Search(Location::HyperlinkAddresses, {.find = u"cat", .with = u"a dog"});

    EXPECT_THAT(lines_, ElementsAre("1 hyperlinks slide1 link1 at 1+3 | [cat>a dog]/cat",
                                    "1 hyperlinks slide1 link1 at 5+3 | cat/[cat>a dog]"));
}

TEST_F(HitsTest, OfLinksTellTheObject)
{
    Open({.slides = {{.shapes = {TextBox(u"cat"), LinkedObject(u"C:\\cat.xlsx")}}}});
    content().slides[0].shapes[1].name = u"Object 3";

    Search(Location::Links, {.find = u"cat", .with = u"dog"});

    EXPECT_THAT(lines_, ElementsAre("1 links slide1 shape2 Object 3 at 4+3 | C:\\[cat>dog].xlsx"));
}

TEST_F(HitsTest, TellThePositionOfThePair)
{
    Open({.slides = {{.shapes = {Placeholder(u"a cat")}}}});
    AddItem(u"cat", u"dog", {Location::Slides});
    AddItem(u"dog", u"cow", {Location::Slides});
    engine.mIsFindOnly = false;

    ProcessFile();

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 shape1 paragraph1 at 3+3 | a [cat>dog]",
                                    "2 slides slide1 shape1 paragraph1 at 3+3 | a [dog>cow]"));
}

TEST_F(HitsTest, KeepLongTitlesShort)
{
    String title(199, u'x');
    title += u"\U0001F408 and more";
    Open({.slides = {{.shapes = {Placeholder(u"cat")}, .title = title}}});

    Search(Location::Slides, {.find = u"cat", .findOnly = true});

    ASSERT_EQ(hits_.size(), 1U);
    EXPECT_EQ(hits_[0].place->slideTitle, String(199, u'x'));
}

TEST_F(HitsTest, AreToldWithoutWhatCannotBeRead)
{
    Open({.slides = {{.shapes = {Placeholder(u"x\rcat")}}}});
    script.Fail("TextRange.TextAt", 5, u"no");
    script.Fail("Slide.Title", 5, u"no");
    script.Fail("Shape.Name", 5, u"no");

    EXPECT_EQ(Search(Location::Slides, {.find = u"cat", .with = u"dog"}), 1);

    ASSERT_EQ(hits_.size(), 1U);
    EXPECT_EQ(lines_[0], "1 slides slide1 shape1 at 3+3 | [>dog]");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(HitsTest, TellPairAndLocationAloneOnceEnoughWereKept)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat cat cat")}, .hyperlinks = {u"cat/cat"}, .title = u"T"}}});
    engine.WantsWholeHit = [this] { return hits_.size() < 2; };

    EXPECT_EQ(Search(Location::Slides, {.find = u"cat", .with = u"dog"}), 3);
    engine.mItems = nullptr;
    EXPECT_EQ(Search(Location::HyperlinkAddresses, {.find = u"cat", .findOnly = true}), 2);

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 T shape1 paragraph1 at 1+3 | [cat>dog] cat cat",
                                    "1 slides slide1 T shape1 paragraph1 at 5+3 | dog [cat>dog] cat",
                                    "1 slides at 0+0 | []", "1 hyperlinks at 0+0 | []", "1 hyperlinks at 0+0 | []"));
    EXPECT_EQ(content().slides[0].shapes[0].text, u"dog dog dog");
}

TEST_F(HitsTest, MayBeWholeAgainAfterOnesThatWereNot)
{
    Open({.slides = {{.shapes = {Placeholder(u"cat\rcat\rcat")}}}});
    engine.WantsWholeHit = [this] { return hits_.size() != 1; };

    Search(Location::Slides, {.find = u"cat", .findOnly = true});

    EXPECT_THAT(lines_, ElementsAre("1 slides slide1 shape1 paragraph1 at 1+3 | [cat]", "1 slides at 0+0 | []",
                                    "1 slides slide1 shape1 paragraph3 at 1+3 | [cat]"));
}

TEST_F(HitsTest, AFailingReceiverChangesNothingAndIsWarnedOfOnce)
{
    const WarningRecorder warnings;
    engine.HitFound = [](const Hit&) { throw Failure(7, u"out of memory"); };
    Open({.slides = {{.shapes = {Placeholder(u"cat cat")}, .hyperlinks = {u"cat"}}}});

    EXPECT_EQ(Search(Location::Slides, {.find = u"cat", .with = u"dog"}), 2);
    EXPECT_EQ(content().slides[0].shapes[0].text, u"dog dog");
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_THAT(
        warnings.Warnings(),
        ElementsAre(std::pair(String(u"a.pptx"), std::string("not all of its hits can be shown: out of memory"))));
}

TEST_F(HitsTest, ReplacementsAndCountsAreThoseOfARunThatTellsNobody)
{
    const FakeContent start{
        .slides = {{.shapes = {Placeholder(u"cat\rcat cats")}, .hyperlinks = {u"cat cat"}, .footer = u"cat"}}};
    const auto run = [&] {
        engine.mItems = nullptr;
        Open(start);
        AddItem(u"cat", u"a cat", {Location::HyperlinkAddresses});
        AddItem(u"cat", u"dog", {Location::Slides, Location::HyperlinkAddresses, Location::Footer});
        engine.mIsFindOnly = false;
        const auto results = ProcessFile();
        return std::pair(results->Item(2)->Counts(),
                         content().slides[0].shapes[0].text + content().slides[0].hyperlinks[0]);
    };
    const auto told = run();
    EXPECT_FALSE(hits_.empty());
    engine.HitFound = {};
    EXPECT_EQ(run(), told);
}

TEST_F(HitsTest, NothingIsAskedWhenNobodyIsTold)
{
    engine.HitFound = {};
    Open({.slides = {{.shapes = {Placeholder(u"cat")}, .title = u"Title"}}});
    for (const char* member : {"TextRange.TextAt", "Slide.Title", "Shape.Name"})
        script.On(member, [member] { ADD_FAILURE() << member << " was asked"; });

    EXPECT_EQ(Search(Location::Slides, {.find = u"cat", .with = u"dog"}), 1);
}

TEST(HitLabel, IsOneLineWithoutBlanksAtItsEnds)
{
    EXPECT_EQ(HitLabel(u" \r one\vtwo\tthree \n"), u"one two three");
    EXPECT_EQ(HitLabel(u""), u"");
    EXPECT_EQ(HitLabel(u"\r \v"), u"");
}

}  // namespace

}  // namespace tessarine
