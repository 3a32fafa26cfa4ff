#include "model/JobProperties.h"

#include <gmock/gmock.h>

#include <functional>

#include "model/CustomProperties.h"
#include "platform/Failure.h"
#include "support/ErrorLogRecorder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::StartsWith;

std::vector<std::string> LinesOf(const CustomProperties& properties)
{
    std::vector<std::string> lines;
    for (const auto& property : properties.NewEnum())
        lines.push_back(ToUtf8(property->ProperyName + u"|" + property->PropertyValue));
    return lines;
}

TEST(JobProperties, StandUnderTheirNamesInTheirOrder)
{
    CustomProperties properties;

    AddJobProperties(properties, {u"/lists/pairs.csv", ListSource::External, u"Polish.lng"});

    EXPECT_THAT(LinesOf(properties), ElementsAre("FindAndReplaceFilePath|/lists/pairs.csv",
                                                 "FindAndReplaceListSource|EXTERNAL", "LANG|Polish.lng"));
}

TEST(JobProperties, SayThatAListIsTheProjectsOwnByDefault)
{
    CustomProperties properties;

    AddJobProperties(properties, {});

    EXPECT_THAT(LinesOf(properties),
                ElementsAre("FindAndReplaceFilePath|", "FindAndReplaceListSource|INTERNAL", "LANG|"));
    EXPECT_EQ(ListSourceOf(properties), ListSource::Internal);
}

TEST(JobProperties, AreReadByPositionWhateverTheirNames)
{
    CustomProperties properties;
    properties.Add(u"LANG", u"  a list.csv ");
    properties.Add(u"FindAndReplaceFilePath", u" External ");
    properties.Add(u"", u" French.lng");

    EXPECT_EQ(ListFileOf(properties), u"a list.csv");
    EXPECT_EQ(ListSourceOf(properties), ListSource::External);
    EXPECT_EQ(LanguageFileOf(properties), u" French.lng");
}

TEST(JobProperties, TakeAnySourceButExternalAsInternal)
{
    for (const auto* text : {u"", u"INTERNAL", u"EXTERN", u"EXTERNAL LIST", u"1"}) {
        CustomProperties properties;
        properties.Add(u"", u"");
        properties.Add(u"", text);

        EXPECT_EQ(ListSourceOf(properties), ListSource::Internal) << ToUtf8(text);
    }
}

TEST(JobProperties, LetTheSourceBeChangedAlone)
{
    CustomProperties properties;
    AddJobProperties(properties, {u"list.csv", ListSource::Internal, u"Polish.lng"});

    PutListSource(properties, ListSource::External);

    EXPECT_THAT(LinesOf(properties),
                ElementsAre("FindAndReplaceFilePath|list.csv", "FindAndReplaceListSource|EXTERNAL", "LANG|Polish.lng"));
}

TEST(JobProperties, TellWhichOfThemAreThere)
{
    CustomProperties properties;
    properties.Add(u"", u"");
    EXPECT_FALSE(HasListSource(properties));

    properties.Add(u"", u"");
    EXPECT_TRUE(HasListSource(properties));
    EXPECT_EQ(LanguageFileOf(properties), std::nullopt);

    AddLanguage(properties, u"Polish");
    EXPECT_EQ(LanguageFileOf(properties), u"Polish");
}

TEST(JobProperties, RaiseAndLogWhenTheyAreMissing)
{
    const ErrorLogRecorder log;
    const CustomProperties none;

    for (const auto& read : {std::function<void()>([&] { ListFileOf(none); }), {[&] { ListSourceOf(none); }}}) {
        try {
            read();
            ADD_FAILURE() << "read a property that is not there";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, FailureNumber::ObjectNotSet);
        }
    }
    EXPECT_THAT(log.Lines(), ElementsAre(StartsWith("Error 9 "), StartsWith("Error 9 ")));
}

}  // namespace
}  // namespace tessarine
