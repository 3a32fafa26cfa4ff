#include "EngineTest.h"

namespace tessarine
{

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using LinksTest = EngineTest;

TEST_F(LinksTest, AReplaceRunUpdatesTheLinksOnce)
{
    Open({.slides = {{.shapes = {LinkedObject(u"C:\\cat.xls"), LinkedObject(u"C:\\x.xls")}}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.olelinks(), 1);

    EXPECT_THAT(script.Calls(), ElementsAre("LinkFormat.SourceFullName = C:\\dog.xls",
                                            "LinkFormat.SourceFullName = C:\\x.xls", "Presentation.UpdateLinks"));
}

TEST_F(LinksTest, AReplaceRunWithoutAHitDoesNotUpdateTheLinks)
{
    Open({.slides = {{.shapes = {LinkedObject(u"C:\\x.xls")}}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.olelinks(), 0);

    EXPECT_THAT(script.Calls(), ElementsAre("LinkFormat.SourceFullName = C:\\x.xls"));
}

TEST_F(LinksTest, AFindRunNeverUpdatesTheLinks)
{
    Open({.slides = {{.shapes = {LinkedObject(u"cat cat")}}, {.shapes = {LinkedObject(u"cat")}}}});
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(engine.olelinks(), 3);

    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(LinksTest, OnlyLinkedOleObjectsAreHandled)
{
    for (const std::int32_t type : {1, 6, 7, 11, 13, 14, 16, 17, 19}) {
        SCOPED_TRACE(type);
        Open({.slides = {{.shapes = {{.type = type, .sourceFullName = u"cat"}}}}});
        Look({.find = u"cat", .with = u"dog"});

        EXPECT_EQ(engine.olelinks(), 0);
    }
    EXPECT_EQ(script.Count("Shape.LinkFormat"), 0);
}

TEST_F(LinksTest, GiveTheWindowsNoTurn)
{
    Open({.slides = {{.shapes = {LinkedObject(u"cat"), Placeholder(u"x")}}}});
    Look({.find = u"cat", .with = u"dog", .countAll = false});
    Deliveries deliveries;

    engine.olelinks();

    EXPECT_EQ(deliveries.Count(), 0u);
}

TEST_F(LinksTest, LetGoOfSlideAndShape)
{
    Open({.slides = {{.shapes = {LinkedObject(u"cat")}}}});
    Look({.find = u"cat", .with = u"dog"});

    engine.olelinks();

    EXPECT_EQ(engine.CurrentSlide, nullptr);
    EXPECT_EQ(engine.CurrentShape, nullptr);
}

TEST_F(LinksTest, LetGoOfAShapeThatAnEarlierWalkLeft)
{
    Open({.slides = {{.shapes = {LinkedObject(u"cat")}}}});
    engine.CurrentShape = engine.xPresentation->Slides()->NewEnum()->Next()->Shapes()->NewEnum()->Next();
    ASSERT_NE(engine.CurrentShape, nullptr);
    Open({});

    engine.olelinks();

    EXPECT_EQ(engine.CurrentShape, nullptr);
}

TEST_F(LinksTest, AFailingUpdateIsRaised)
{
    Open({.slides = {{.shapes = {LinkedObject(u"cat")}}}});
    Look({.find = u"cat", .with = u"dog"});
    script.Fail("Presentation.UpdateLinks", 4711, u"no source");

    EXPECT_EQ(FailureOf([&] { engine.olelinks(); }).number, 4711);
}

}  // namespace

}  // namespace tessarine
