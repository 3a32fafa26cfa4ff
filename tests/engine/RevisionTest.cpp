#include "EngineTest.h"

namespace tessarine
{

namespace
{

using powerpoint::Value;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RevisionTest : public EngineTest
{
protected:
    /// What a property "Revision" of this value holds after an update.
    Value Updated(const Value& value, const String& increment)
    {
        Open({.customProperties = {{u"Revision", value}}});
        engine.UpdateISO9001Version(u"REVISION", increment);
        return content().customProperties[0].value;
    }
};

TEST_F(RevisionTest, AddsTheIncrementUnderANameInAnyCase)
{
    EXPECT_EQ(std::get<double>(Updated(std::int64_t{3}, u"1")), 4.0);
}

TEST_F(RevisionTest, AddsFractions)
{
    EXPECT_EQ(std::get<double>(Updated(std::int64_t{1}, u"0.5")), 1.5);
    EXPECT_EQ(std::get<double>(Updated(1.25, u"0.5")), 1.75);
}

TEST_F(RevisionTest, ReadsANumberFromText)
{
    EXPECT_EQ(std::get<double>(Updated(String(u"2.5"), u"1.0")), 3.5);
}

TEST_F(RevisionTest, TakesABooleanForMinusOneOrZero)
{
    EXPECT_EQ(std::get<double>(Updated(true, u"3")), 2.0);
    EXPECT_EQ(std::get<double>(Updated(false, u"3")), 3.0);
}

TEST_F(RevisionTest, WritesBackAValueThatIsNotANumber)
{
    EXPECT_EQ(std::get<String>(Updated(String(u"A"), u"1")), u"A");
    EXPECT_THAT(script.Calls(), ElementsAre("DocumentProperty.Value = Revision"));
}

TEST_F(RevisionTest, WritesADateBackAsItWas)
{
    powerpoint::Date date;
    date.local.tm_year = 124;
    date.local.tm_mday = 1;

    EXPECT_EQ(std::get<powerpoint::Date>(Updated(date, u"1")).local.tm_year, 124);
}

TEST_F(RevisionTest, WritesBackTheValueForAnIncrementThatIsNotANumber)
{
    EXPECT_EQ(std::get<std::int64_t>(Updated(std::int64_t{3}, u"")), 3);
    EXPECT_EQ(std::get<std::int64_t>(Updated(std::int64_t{3}, u"one")), 3);
    EXPECT_EQ(script.Calls().size(), 2u);
}

TEST_F(RevisionTest, UpdatesEveryPropertyOfTheName)
{
    Open({.customProperties = {
              {u"Revision", std::int64_t{1}}, {u"Other", std::int64_t{1}}, {u"revision", std::int64_t{5}}}});

    engine.UpdateISO9001Version(u"Revision", u"1");

    EXPECT_EQ(std::get<double>(content().customProperties[0].value), 2.0);
    EXPECT_EQ(std::get<std::int64_t>(content().customProperties[1].value), 1);
    EXPECT_EQ(std::get<double>(content().customProperties[2].value), 6.0);
}

TEST_F(RevisionTest, ComparesNamesBeyondAsciiWithoutCase)
{
    Open({.customProperties = {{u"Überarbeitung", std::int64_t{1}}}});

    engine.UpdateISO9001Version(u"überarbeitung", u"1");

    EXPECT_EQ(std::get<double>(content().customProperties[0].value), 2.0);
}

TEST_F(RevisionTest, AnEmptyNameMatchesNoPropertyWithAName)
{
    Open({.customProperties = {{u"Revision", std::int64_t{1}}}});

    engine.UpdateISO9001Version(u"", u"1");

    EXPECT_THAT(script.Calls(), IsEmpty());
}

TEST_F(RevisionTest, DoesNotMakeAMissingProperty)
{
    engine.UpdateISO9001Version(u"Revision", u"1");

    EXPECT_THAT(content().customProperties, IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(RevisionTest, UpdatesInAFindRunToo)
{
    engine.mIsFindOnly = true;

    EXPECT_EQ(std::get<double>(Updated(std::int64_t{3}, u"1")), 4.0);
}

TEST_F(RevisionTest, OneFailureEndsTheUpdateAndIsLogged)
{
    Open({.customProperties = {{u"Revision", std::int64_t{1}},
                               {.name = u"Revision", .value = std::int64_t{1}, .writeFailure = 70},
                               {u"Revision", std::int64_t{1}}}});

    engine.UpdateISO9001Version(u"Revision", u"1");

    EXPECT_EQ(std::get<double>(content().customProperties[0].value), 2.0);
    EXPECT_EQ(std::get<std::int64_t>(content().customProperties[2].value), 1);
    EXPECT_THAT(Log(), ElementsAre("Error 70 (The value can't be written) in procedure UpdateISO9001Version at Line "
                                   "No. 0 of Class Module SearchFunctions"));
}

TEST_F(RevisionTest, CountsPropertiesInSixteenBits)
{
    Open({.customProperties = std::vector<FakeProperty>(32768)});

    engine.UpdateISO9001Version(u"Revision", u"1");

    EXPECT_THAT(Log(), ElementsAre("Error 6 (Overflow) in procedure UpdateISO9001Version at Line No. 0 of Class Module "
                                   "SearchFunctions"));
}

}  // namespace

}  // namespace tessarine
