#include "EngineTest.h"

namespace tessarine
{

namespace
{

using powerpoint::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t noValue = -2147467259;

using BuiltinPropertiesTest = EngineTest;
using CustomPropertiesTest = EngineTest;

String TextIn(const FakeProperty& property)
{
    const String* text = std::get_if<String>(&property.value);
    return text ? *text : u"<no text>";
}

TEST_F(BuiltinPropertiesTest, AFindRunCountsAllAndWritesNothing)
{
    Open({.builtInProperties = {
              {u"Title", String(u"cat cat")}, {u"Author", String(u"none")}, {u"Any", String(u"cat")}}});
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(engine.BuiltinProperties(), 3);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(BuiltinPropertiesTest, AReplaceRunWritesEachValueBackFoundOrNot)
{
    Open({.builtInProperties = {{u"Title", String(u"cat")}, {u"Author", String(u"none")}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.BuiltinProperties(), 1);

    EXPECT_THAT(script.Calls(), ElementsAre("DocumentProperty.Value = Title", "DocumentProperty.Value = Author"));
    EXPECT_EQ(TextIn(content().builtInProperties[0]), u"dog");
    EXPECT_EQ(TextIn(content().builtInProperties[1]), u"none");
}

TEST_F(BuiltinPropertiesTest, AReplaceRunTurnsOtherTypesIntoText)
{
    Open({.builtInProperties = {{u"Slides", std::int64_t{12}}, {u"Linked", true}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.BuiltinProperties(), 0);

    EXPECT_EQ(TextIn(content().builtInProperties[0]), u"12");
    EXPECT_EQ(TextIn(content().builtInProperties[1]), u"True");
}

TEST_F(BuiltinPropertiesTest, FindInNumbersByTheirText)
{
    Open({.builtInProperties = {{u"Slides", std::int64_t{2024}}}});
    Look({.find = u"20", .with = u"30", .findOnly = true});

    EXPECT_EQ(engine.BuiltinProperties(), 1);
}

TEST_F(BuiltinPropertiesTest, AValueThatCannotBeReadRepeatsTheCountBefore)
{
    Open({.builtInProperties = {{u"Title", String(u"cat cat")},
                                {.name = u"Printed", .readFailure = noValue},
                                {.name = u"Saved", .readFailure = noValue},
                                {u"Author", String(u"none")},
                                {.name = u"Links", .readFailure = noValue}}});
    Look({.find = u"cat", .findOnly = true});

    // 2 for the title, 2 each for the two that follow it; after the count of -1 nothing is added.
    EXPECT_EQ(engine.BuiltinProperties(), 6);
}

TEST_F(BuiltinPropertiesTest, AFirstValueThatCannotBeReadAddsNothing)
{
    Open({.builtInProperties = {{.name = u"Printed", .readFailure = noValue}, {u"Title", String(u"cat")}}});
    Look({.find = u"cat", .findOnly = true});

    EXPECT_EQ(engine.BuiltinProperties(), 1);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(BuiltinPropertiesTest, CountsAValueThatCannotBeWritten)
{
    Open({.builtInProperties = {{.name = u"Title", .value = String(u"cat"), .writeFailure = 70}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.BuiltinProperties(), 1);
    EXPECT_EQ(TextIn(content().builtInProperties[0]), u"cat");
}

TEST_F(BuiltinPropertiesTest, OnlyTheFirstPropertysFetchIsRaised)
{
    Open({.builtInProperties = {{u"Title", String(u"cat")}, {u"Author", String(u"none")}}});
    Look({.find = u"cat", .findOnly = true});
    script.FailOnce("BuiltInDocumentProperties.Item", 4711, u"gone", 2);
    EXPECT_EQ(engine.BuiltinProperties(), 2);

    script.FailOnce("BuiltInDocumentProperties.Item", 4712, u"gone", 1);
    EXPECT_EQ(FailureOf([&] { engine.BuiltinProperties(); }).number, 4712);
}

TEST_F(BuiltinPropertiesTest, FetchTheCollectionAgainForEachProperty)
{
    Open({.builtInProperties = {{u"A", String()}, {u"B", String()}, {u"C", String()}}});
    Look({.find = u"cat", .findOnly = true});

    engine.BuiltinProperties();

    EXPECT_EQ(script.Count("Presentation.BuiltInDocumentProperties"), 4);
}

TEST_F(BuiltinPropertiesTest, CountInSixteenBits)
{
    Open({.builtInProperties = std::vector<FakeProperty>(32768)});
    Look({.find = u"cat", .findOnly = true});

    const Failure failure = FailureOf([&] { engine.BuiltinProperties(); });

    EXPECT_EQ(failure.number, 6);
    content().builtInProperties.pop_back();
    EXPECT_EQ(engine.BuiltinProperties(), 0);
}

TEST_F(BuiltinPropertiesTest, DeliverEventsWithoutASleepForEachProperty)
{
    Open({.builtInProperties = std::vector<FakeProperty>(30)});
    Look({.find = u"cat", .findOnly = true});
    engine.mCPUUsage = true;
    Deliveries deliveries;

    engine.BuiltinProperties();

    EXPECT_EQ(deliveries.Count(), 30u);
    EXPECT_EQ(deliveries.AfterASleep(), 0u);
}

TEST_F(BuiltinPropertiesTest, PassOverAFailingDelivery)
{
    Open({.builtInProperties = {{u"A", String(u"cat")}, {u"B", String(u"cat")}}});
    Look({.find = u"cat", .findOnly = true});
    Deliveries deliveries;
    deliveries.Fail(4711);

    EXPECT_EQ(engine.BuiltinProperties(), 2);
}

TEST_F(CustomPropertiesTest, AFindRunCountsAndWritesNothing)
{
    Open({.customProperties = {{u"A", String(u"cat cat")}, {u"B", String(u"none")}}});
    Look({.find = u"cat", .with = u"dog", .findOnly = true});

    EXPECT_EQ(engine.CustomProperties(), 2);
    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(CustomPropertiesTest, AReplaceRunWritesOnlyPropertiesWithAHit)
{
    Open(
        {.customProperties = {{u"A", String(u"cat")}, {u"B", std::int64_t{7}}, {u"C", true}, {u"D", String(u"none")}}});
    Look({.find = u"cat", .with = u"dog"});

    EXPECT_EQ(engine.CustomProperties(), 1);

    EXPECT_THAT(script.Calls(), ElementsAre("DocumentProperty.Value = A"));
    EXPECT_EQ(TextIn(content().customProperties[0]), u"dog");
    EXPECT_TRUE(std::holds_alternative<std::int64_t>(content().customProperties[1].value));
    EXPECT_TRUE(std::holds_alternative<bool>(content().customProperties[2].value));
}

TEST_F(CustomPropertiesTest, AMatchInAnotherTypeBecomesText)
{
    Open({.customProperties = {{u"A", std::int64_t{2024}}}});
    Look({.find = u"20", .with = u"30"});

    EXPECT_EQ(engine.CustomProperties(), 1);

    EXPECT_EQ(TextIn(content().customProperties[0]), u"3024");
}

TEST_F(CustomPropertiesTest, TakeTheModeFromThePairsProject)
{
    Open({.customProperties = {{u"A", String(u"cat")}}});
    Look({.find = u"cat", .with = u"dog"});
    engine.mIsFindOnly = false;
    project->options->IsFindOnly = true;
    engine.CustomProperties();
    EXPECT_EQ(TextIn(content().customProperties[0]), u"cat");

    engine.mIsFindOnly = true;
    project->options->IsFindOnly = false;
    engine.CustomProperties();
    EXPECT_EQ(TextIn(content().customProperties[0]), u"dog");
}

TEST_F(CustomPropertiesTest, APairWithoutAProjectFailsAtTheFirstProperty)
{
    Look({.find = u"cat", .with = u"dog"});
    engine.mItem->Project.reset();
    EXPECT_EQ(engine.CustomProperties(), 0);

    Open({.customProperties = {{u"A", String(u"none")}}});
    const Failure failure = FailureOf([&] { engine.CustomProperties(); });

    EXPECT_EQ(failure.number, 91);
    EXPECT_EQ(failure.source, u"CustomProperties");
}

TEST_F(CustomPropertiesTest, AValueThatCannotBeReadOrWrittenIsRaised)
{
    Look({.find = u"cat", .with = u"dog"});
    Open({.customProperties = {{.name = u"A", .readFailure = 4711}}});
    EXPECT_EQ(FailureOf([&] { engine.CustomProperties(); }).number, 4711);

    Open({.customProperties = {{.name = u"A", .value = String(u"cat"), .writeFailure = 4712}}});
    EXPECT_EQ(FailureOf([&] { engine.CustomProperties(); }).number, 4712);
}

TEST_F(CustomPropertiesTest, CountInSixteenBits)
{
    Open({.customProperties = std::vector<FakeProperty>(32768)});

    EXPECT_EQ(FailureOf([&] { engine.CustomProperties(); }).number, 6);
}

TEST_F(CustomPropertiesTest, DeliverEventsWithoutASleepForEachProperty)
{
    Open({.customProperties = std::vector<FakeProperty>(30)});
    Look({.find = u"cat", .findOnly = true});
    engine.mCPUUsage = true;
    Deliveries deliveries;

    engine.CustomProperties();

    EXPECT_EQ(deliveries.Count(), 30u);
    EXPECT_EQ(deliveries.AfterASleep(), 0u);
}

}  // namespace

}  // namespace tessarine
