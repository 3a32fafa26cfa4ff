#include "batch/FailureReason.h"

#include <gtest/gtest.h>

#include "platform/Treatments.h"

namespace tessarine::batch
{
namespace
{

Failure Nested(const String& text)
{
    try {
        RaiseOn(u"ProcessFile", u"ProcessFile", u"Class Module SearchFunctions", [&] {
            RaiseOn(u"Notes", u"Notes ", u"Class Module SearchFunctions",
                    [&]() -> void { throw Failure(-2147467259, text); });
        });
    } catch (const Failure& failure) {
        return failure;
    }
    return Failure(0, u"");
}

TEST(FailureReason, IsTheInnermostOfTextsThatNest)
{
    ASSERT_NE(Nested(u"the part is damaged").description, u"the part is damaged");

    EXPECT_EQ(ReasonOf(Nested(u"the part is damaged")), u"the part is damaged");
}

TEST(FailureReason, KeepsParenthesesOfTheTextItself)
{
    EXPECT_EQ(ReasonOf(Nested(u"slide (3) at \"a (b)\"")), u"slide (3) at \"a (b)\"");
}

TEST(FailureReason, IsThePlainTextWhereNothingNests)
{
    EXPECT_EQ(ReasonOf(Failure(70, u"Permission denied: a.pptx")), u"Permission denied: a.pptx");
    EXPECT_EQ(ReasonOf(Failure(70, u"Error 5 (of many)")), u"Error 5 (of many)");
    EXPECT_EQ(ReasonOf(Failure(70, u"Error in line 5")), u"Error in line 5");
}

TEST(FailureReason, IsTheNumberWhereThereIsNoText)
{
    EXPECT_EQ(ReasonOf(Failure(-5, u"")), u"Error -5");
    EXPECT_EQ(ReasonOf(Nested(u"")), u"Error -2147467259");
}

}  // namespace
}  // namespace tessarine::batch
