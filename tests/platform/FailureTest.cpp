#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>

#include "platform/CheckedInteger.h"

namespace tessarine
{

namespace
{

template <class Exception>
Failure Translated(const Exception& exception)
{
    try {
        throw exception;
    } catch (...) {
        return CurrentFailure();
    }
}

}  // namespace

TEST(Failure, NamesNumberAndDescription)
{
    EXPECT_STREQ(Failure(53, u"File not found é").what(), "Error 53 (File not found é)");
}

TEST(Failure, GivesItsDescriptionAsTheReason)
{
    EXPECT_EQ(Failure(70, u"Permission denied: a.pptx").Reason(), u"Permission denied: a.pptx");
    EXPECT_EQ(Failure(70, u"Error 5 (of many)").Reason(), u"Error 5 (of many)");
}

TEST(Failure, GivesItsNumberWithoutADescription)
{
    EXPECT_EQ(Failure(-5, u"").Reason(), u"Error -5");
}

TEST(Failure, IsHandedOnAsItIs)
{
    const Failure failure = Translated(Failure(1004, u"text", u"Slides"));

    EXPECT_EQ(failure.number, 1004);
    EXPECT_EQ(failure.description, u"text");
    EXPECT_EQ(failure.source, u"Slides");
}

TEST(Failure, StandsForMemoryThatRanOut)
{
    EXPECT_EQ(Translated(std::bad_alloc()).number, 7);
}

TEST(Failure, StandsForAnyOtherExceptionWithItsText)
{
    const Failure failure = Translated(std::runtime_error("odd"));

    EXPECT_EQ(failure.number, 51);
    EXPECT_EQ(failure.description, u"odd");
}

TEST(Failure, MeetsTheUseOfANullReference)
{
    try {
        NotNull(std::shared_ptr<int>());
        FAIL() << "a null reference was handed out";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 91);
        EXPECT_EQ(failure.description, u"Object variable or With block variable not set");
    }
}

TEST(CheckedInteger, TakesTheWholeRangeAndNothingBeyond)
{
    EXPECT_EQ(Checked<std::int16_t>(32767), 32767);
    EXPECT_EQ(Checked<std::int16_t>(-32768), -32768);
    EXPECT_EQ(CheckedSum(std::int32_t{2147483646}, 1), 2147483647);
    for (const std::int64_t tooMuch : {32768, -32769}) {
        try {
            Checked<std::int16_t>(tooMuch);
            FAIL() << tooMuch;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, 6);
            EXPECT_EQ(failure.description, u"Overflow");
        }
    }
    EXPECT_THROW(CheckedSum(std::int32_t{2147483647}, 1), Failure);
}

}  // namespace tessarine
