#include "log/Treatments.h"

#include <gmock/gmock.h>

#include <memory>

#include "support/ErrorLogRecorder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FailureText, HasTheCommonForm)
{
    EXPECT_EQ(FailureText(Failure(76, u"Path not found"), u"Search", u"Class Module Project"),
              u"Error 76 (Path not found) in procedure Search at Line No. 0 of Class Module Project");
}

TEST(FailureText, ShowsNegativeNumbersAsTheyAre)
{
    EXPECT_EQ(FailureText(Failure(FailureNumber::RemoteCallFailed, u""), u"P", u"Form frmMain"),
              u"Error -2147023170 () in procedure P at Line No. 0 of Form frmMain");
}

TEST(LogAndReturn, HandsOnTheResultOfABodyThatSucceeds)
{
    const ErrorLogRecorder log;

    EXPECT_EQ(LogAndReturn({u"P", u"Module M"}, [] { return 7; }), 7);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(LogAndReturn, GivesTheEmptyResultAndOneLine)
{
    const ErrorLogRecorder log;

    const int number = LogAndReturn({u"P", u"Module M"}, []() -> int { throw Failure(9, u"Subscript out of range"); });
    const auto reference =
        LogAndReturn({u"Q", u"Module M"}, []() -> std::shared_ptr<int> { throw std::runtime_error("odd"); });
    LogAndReturn({u"R", u"Module M"}, [] { throw Failure(5, u"bad"); });

    EXPECT_EQ(number, 0);
    EXPECT_EQ(reference, nullptr);
    EXPECT_THAT(log.Lines(), ElementsAre("Error 9 (Subscript out of range) in procedure P at Line No. 0 of Module M",
                                         "Error 51 (odd) in procedure Q at Line No. 0 of Module M",
                                         "Error 5 (bad) in procedure R at Line No. 0 of Module M"));
}

TEST(RaiseOn, KeepsTheNumberAndNestsTheTexts)
{
    const ErrorLogRecorder log;

    try {
        RaiseOn(u"ProcessFile", u"ProcessFile", u"Class Module SearchFunctions", [] {
            RaiseOn(u"Slides", u"Slides", u"Class Module SearchFunctions", [] { throw Failure(1234, u"inner"); });
        });
        FAIL() << "nothing was raised";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 1234);
        EXPECT_EQ(failure.source, u"ProcessFile");
        EXPECT_EQ(failure.description,
                  u"Error 1234 (Error 1234 (inner) in procedure Slides at Line No. 0 of Class Module SearchFunctions) "
                  u"in procedure ProcessFile at Line No. 0 of Class Module SearchFunctions");
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
}

Failure RaisedOnTwice(const String& description)
{
    try {
        RaiseOn(u"ProcessFile", u"ProcessFile", u"Class Module SearchFunctions", [&] {
            RaiseOn(u"Notes", u"Notes ", u"Class Module SearchFunctions",
                    [&] { throw Failure(FailureNumber::Unspecified, description); });
        });
    } catch (const Failure& failure) {
        return failure;
    }
    return {0, u"nothing was raised"};
}

TEST(RaiseOn, KeepsTheReason)
{
    ASSERT_NE(RaisedOnTwice(u"the part is damaged").description, u"the part is damaged");

    EXPECT_EQ(RaisedOnTwice(u"the part is damaged").Reason(), u"the part is damaged");
    EXPECT_EQ(RaisedOnTwice(u"slide (3) at \"a (b)\"").Reason(), u"slide (3) at \"a (b)\"");
    EXPECT_EQ(RaisedOnTwice(u"").Reason(), u"Error -2147467259");
}

TEST(RaiseOn, KeepsAReasonThatReadsLikeAWrapping)
{
    const String reason = u"Error 5 (a) in procedure b at Line No. 1 of c.pptx";

    EXPECT_EQ(RaisedOnTwice(reason).Reason(), reason);
}

TEST(RaiseOn, TakesTheReasonOfAnyException)
{
    try {
        RaiseOn(u"S", u"S", u"Module M", [] { throw std::runtime_error("odd"); });
        FAIL() << "nothing was raised";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, FailureNumber::InternalError);
        EXPECT_EQ(failure.Reason(), u"odd");
    }
}

TEST(RaiseOn, HandsOnTheResultOfABodyThatSucceeds)
{
    EXPECT_EQ(RaiseOn(u"S", u"S", u"Module M", [] { return 3; }), 3);
}

TEST(Skip, GivesTheNumberOfTheFailureOrZero)
{
    const ErrorLogRecorder log;

    EXPECT_EQ(Skip([] {}), 0);
    EXPECT_EQ(Skip([] { throw Failure(462, u"gone"); }), 462);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace tessarine
