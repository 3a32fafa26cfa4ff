#include "log/Warnings.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "platform/Failure.h"
#include "support/ErrorLogRecorder.h"

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::Pair;

TEST(Warnings, QuoteNamesAndCutVeryLongOnes)
{
    EXPECT_EQ(QuotedName(u"Title 1"), u"\"Title 1\"");
    EXPECT_EQ(QuotedName({}), u"\"\"");
    EXPECT_EQ(QuotedName(String(80, u'a')), u'"' + String(80, u'a') + u'"');
    EXPECT_EQ(QuotedName(String(81, u'a')), u'"' + String(80, u'a') + u"...\"");
    EXPECT_EQ(QuotedName(String(79, u'a') + u"\U0001F600"), u'"' + String(79, u'a') + u"...\"");
}

TEST(Warnings, ReachTheReceiverWithPathAndText)
{
    std::vector<std::pair<String, String>> told;
    const WarningPort before =
        SetWarningReceiver([&](const String& path, const String& text) { told.emplace_back(path, text); });

    Warn(u"/\u0434/a b.pptx", u"its dates could not be kept");
    SetWarningReceiver(before);

    EXPECT_THAT(told, ElementsAre(Pair(String(u"/\u0434/a b.pptx"), String(u"its dates could not be kept"))));
}

TEST(Warnings, GoToTheErrorLogWithoutAReceiver)
{
    const ErrorLogRecorder log;
    const WarningPort before = SetWarningReceiver({});

    Warn(u"/a.pptx", u"its dates could not be kept");
    SetWarningReceiver(before);

    EXPECT_THAT(log.Lines(), ElementsAre("/a.pptx: its dates could not be kept"));
}

TEST(Warnings, SurviveAReceiverThatRaises)
{
    const WarningPort before =
        SetWarningReceiver([](const String&, const String&) { throw Failure(FailureNumber::DeviceIO, u"?"); });

    EXPECT_NO_THROW(Warn(u"/a.pptx", u"?"));

    SetWarningReceiver(before);
}

}  // namespace
}  // namespace tessarine
