#include "model/Excel.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/Failure.h"
#include "support/FakeExcel.h"

namespace tessarine::excel
{
namespace
{

/// The number of the failure that an action raises, 0 for none.
template <class Action>
std::int32_t FailureOf(Action action)
{
    try {
        action();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

TEST(ExcelValueTest, BecomesTextAsThePlatformConverts)
{
    EXPECT_EQ(TextOf({}), u"");
    EXPECT_EQ(TextOf(true), u"True");
    EXPECT_EQ(TextOf(false), u"False");
    EXPECT_EQ(TextOf(String(u" a\tb\n")), u" a\tb\n");
    EXPECT_EQ(TextOf(2024.0), u"2024");
    EXPECT_EQ(TextOf(-0.5), u"-0.5");
    EXPECT_EQ(TextOf(1e20), u"1E+20");
    EXPECT_EQ(TextOf(0.0), u"0");
}

TEST(ExcelValueTest, OfANumberHas15DigitsAtMost)
{
    EXPECT_EQ(TextOf(0.1 + 0.2), u"0.3");
    EXPECT_EQ(TextOf(1.0 / 3), u"0.333333333333333");
    EXPECT_EQ(TextOf(123456789012345.0), u"123456789012345");
    EXPECT_EQ(TextOf(std::numeric_limits<double>::infinity()), u"INF");
}

TEST(ExcelValueTest, OfAnErrorHasNoText)
{
    EXPECT_EQ(FailureOf([] { TextOf(CellError{0x2A}); }), 13);
}

TEST(ExcelProviderTest, WithoutOneThereIsNoApplication)
{
    const auto previous = SetProvider({});

    EXPECT_EQ(FailureOf([] { CreateApplication(); }), 429);

    SetProvider(previous);
}

TEST(ExcelProviderTest, IsTheOneSetLast)
{
    const FakeExcel excel;

    EXPECT_TRUE(CreateApplication());
    EXPECT_EQ(excel.Running(), 1);
}

}  // namespace
}  // namespace tessarine::excel
