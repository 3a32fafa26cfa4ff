#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using MasterLocationsTest = EngineTest;

FakeDesign DesignWith(const String& name, const String& text)
{
    return {.name = name, .slideMaster = {.shapes = {Placeholder(text)}}};
}

TEST_F(MasterLocationsTest, PerSlideSearchesEachDesignInUseOnce)
{
    Open({.slides = {{.design = 0}, {.design = 0}, {.design = 1}, {.design = 0}},
          .designs = {DesignWith(u"A", u"cat"), DesignWith(u"B", u"cat"), DesignWith(u"C", u"cat")}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 2);
    EXPECT_EQ(script.Count("Design.SlideMaster"), 2);
}

TEST_F(MasterLocationsTest, PerPresentationSearchesADesignThatNoSlideUses)
{
    Open({.slides = {{.design = 0}, {.design = 0}, {.design = 1}},
          .designs = {DesignWith(u"A", u"cat"), DesignWith(u"B", u"cat"), DesignWith(u"C", u"cat")}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerPresentation(), 3);
}

TEST_F(MasterLocationsTest, PerSlideFollowsTheOrderOfTheSlides)
{
    Open({.slides = {{.design = 1}, {.design = 0}},
          .designs = {DesignWith(u"A", u"first"), DesignWith(u"B", u"second")}});
    Look({.find = u"cat", .with = u"dog"});
    script.FailOnce("TextRange.Replace", 4711);
    content().designs[0].slideMaster.shapes[0].text = u"cat";
    content().designs[1].slideMaster.shapes[0].text = u"cat";

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 1);

    EXPECT_EQ(content().designs[1].slideMaster.shapes[0].text, u"cat");
    EXPECT_EQ(content().designs[0].slideMaster.shapes[0].text, u"dog");
}

TEST_F(MasterLocationsTest, PerSlideTellsDesignsApartByNameAlone)
{
    Open({.slides = {{.design = 0}, {.design = 1}, {.design = 2}},
          .designs = {DesignWith(u"A", u"cat"), DesignWith(u"A", u"cat"), DesignWith(u"a", u"cat")}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 2);
}

TEST_F(MasterLocationsTest, PerSlideSkipsAFirstDesignWithoutAName)
{
    Open({.slides = {{.design = 0}}, .designs = {DesignWith(u"", u"cat")}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 0);
    EXPECT_EQ(engine.SlidesMasterPerPresentation(), 1);
}

TEST_F(MasterLocationsTest, PerSlideSearchesALaterDesignWithoutAName)
{
    // The first name takes the place of the empty entry that the list starts with.
    Open({.slides = {{.design = 0}, {.design = 1}, {.design = 1}},
          .designs = {DesignWith(u"A", u"cat"), DesignWith(u"", u"cat")}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 2);
}

TEST_F(MasterLocationsTest, WithoutSlidesOnlyPerPresentationSearches)
{
    Open({.designs = {DesignWith(u"A", u"cat")}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 0);
    EXPECT_EQ(engine.SlidesMasterPerPresentation(), 1);
}

TEST_F(MasterLocationsTest, PerSlideCountsDesignsInSixteenBits)
{
    FakeContent many;
    for (std::size_t index = 0; index < 32768; ++index) {
        many.slides.push_back({.design = index});
        many.designs.push_back({.name = FromUtf8(std::to_string(index))});
    }
    Open(std::move(many));

    EXPECT_EQ(FailureOf([&] { engine.SlidesMasterPerSlide(); }).number, 6);

    content().slides.pop_back();
    EXPECT_EQ(engine.SlidesMasterPerSlide(), 0);
}

TEST_F(MasterLocationsTest, SlideMasterLocationsLeaveTitleMastersAlone)
{
    Open(
        {.slides = {FakeSlide{}}, .designs = {{.name = u"A", .titleMaster = FakeMaster{.shapes = {TextBox(u"cat")}}}}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.SlidesMasterPerSlide(), 0);
    EXPECT_EQ(engine.SlidesMasterPerPresentation(), 0);
    EXPECT_EQ(engine.TitleMaster(), 1);
}

TEST_F(MasterLocationsTest, TitleMasterPassesOverADesignWithoutOne)
{
    Open({.designs = {{.name = u"A"}, {.name = u"B", .titleMaster = FakeMaster{.shapes = {TextBox(u"cat")}}}}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.TitleMaster(), 1);
    EXPECT_EQ(script.Count("Design.TitleMaster"), 1);
}

TEST_F(MasterLocationsTest, TitleMasterTakesAnyAnswerButZeroForYes)
{
    for (const powerpoint::TriState answer : {-1, 1, 2, -2}) {
        SCOPED_TRACE(answer);
        Open({.designs = {{.titleMaster = FakeMaster{.shapes = {TextBox(u"cat")}}, .hasTitleMaster = answer}}});
        Look({.find = u"cat", .findOnly = true});

        EXPECT_EQ(engine.TitleMaster(), 1);
    }
}

TEST_F(MasterLocationsTest, NotesMasterCountsShapesHeaderAndFooter)
{
    Open({.notesMaster = {.shapes = {Placeholder(u"cat")}, .header = u"cat cat", .footer = u"cat"}});
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(engine.NotesMaster(), 4);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(MasterLocationsTest, NotesMasterRewritesHeaderAndFooterWithoutAHitToo)
{
    Open({.notesMaster = {.header = u"head", .footer = u"foot"}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.NotesMaster(), 0);

    EXPECT_THAT(script.Calls(), ElementsAre("HeaderFooter.Text = head", "HeaderFooter.Text = foot"));
}

TEST_F(MasterLocationsTest, NotesMasterReplacesInHeaderAndFooter)
{
    Open({.notesMaster = {.header = u"a cat", .footer = u"cat"}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.NotesMaster(), 2);

    EXPECT_EQ(content().notesMaster.header, u"a dog");
    EXPECT_EQ(content().notesMaster.footer, u"dog");
}

TEST_F(MasterLocationsTest, HandoutMasterAloneHandlesTheNotesMastersHeaderAndFooter)
{
    Open({.notesMaster = {.shapes = {Placeholder(u"cat")}, .header = u"cat", .footer = u"cat"},
          .handoutMaster = {.shapes = {Placeholder(u"cat")}, .header = u"cat", .footer = u"cat"}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.HandoutMaster(), 3);

    EXPECT_EQ(content().notesMaster.header, u"dog");
    EXPECT_EQ(content().notesMaster.footer, u"dog");
    EXPECT_EQ(content().notesMaster.shapes[0].text, u"cat");
    EXPECT_EQ(content().handoutMaster.shapes[0].text, u"dog");
    EXPECT_EQ(content().handoutMaster.header, u"cat");
    EXPECT_EQ(content().handoutMaster.footer, u"cat");
}

TEST_F(MasterLocationsTest, HandoutMasterLeavesHeaderAndFooterToTheNotesMaster)
{
    Open({.notesMaster = {.header = u"cat", .footer = u"cat"}, .handoutMaster = {.shapes = {Placeholder(u"cat")}}});
    Look({.find = u"cat", .with = u"dog"});
    engine.mItem->OptionSetting->InNotesMaster = true;

    EXPECT_EQ(engine.HandoutMaster(), 1);
    EXPECT_EQ(content().notesMaster.header, u"cat");
}

TEST_F(MasterLocationsTest, BothTogetherCountTheTextsUnderTheNotesMasterOnly)
{
    Open({.notesMaster = {.header = u"cat", .footer = u"cat"}});
    engine.mIsFindOnly = true;
    engine.IsRequiredCount = true;
    AddItem(u"cat", u"dog", {Location::NotesMaster, Location::HandoutMaster});

    const auto status = ProcessFile()->Item(1);

    EXPECT_EQ(status->NotesMaster_Replaced(), 2);
    EXPECT_EQ(status->HandoutMaster_Replaced(), 0);
}

TEST_F(MasterLocationsTest, HandoutMasterAloneCountsTheTextsUnderItsOwnName)
{
    Open({.notesMaster = {.header = u"cat", .footer = u"cat"}});
    engine.mIsFindOnly = true;
    engine.IsRequiredCount = true;
    AddItem(u"cat", u"dog", {Location::HandoutMaster});

    const auto status = ProcessFile()->Item(1);

    EXPECT_EQ(status->NotesMaster_Replaced(), -1);
    EXPECT_EQ(status->HandoutMaster_Replaced(), 2);
}

TEST_F(MasterLocationsTest, ANotesMasterWithoutHeaderOrFooterEndsTheFile)
{
    Open({.notesMaster = {.footer = u"cat"}});
    EXPECT_EQ(FailureOf([&] { engine.NotesMaster(); }).number, -2147188160);
    EXPECT_EQ(FailureOf([&] { engine.HandoutMaster(); }).number, -2147188160);

    Open({.notesMaster = {.header = u"cat"}});
    EXPECT_EQ(FailureOf([&] { engine.NotesMaster(); }).number, -2147188160);
    EXPECT_EQ(FailureOf([&] { engine.HandoutMaster(); }).number, -2147188160);
}

}  // namespace

}  // namespace tessarine
