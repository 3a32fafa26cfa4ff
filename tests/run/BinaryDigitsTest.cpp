#include "run/BinaryDigits.h"

#include <gtest/gtest.h>

#include "log/Treatments.h"

namespace tessarine
{

TEST(BinaryDigits, StandMostSignificantFirst)
{
    EXPECT_EQ(DecimalToBinary(0), u"0");
    EXPECT_EQ(DecimalToBinary(1), u"1");
    EXPECT_EQ(DecimalToBinary(5), u"101");
    EXPECT_EQ(DecimalToBinary(33), u"100001");
    EXPECT_EQ(DecimalToBinary(2147483647), String(31, u'1'));
}

TEST(BinaryDigits, AreReadBack)
{
    EXPECT_EQ(BinaryToDecimal(u""), 0);
    EXPECT_EQ(BinaryToDecimal(u"101"), 5);
    EXPECT_EQ(BinaryToDecimal(u"19"), 11) << "digits above 1 count by their place, too";
    for (const std::int32_t number : {0, 1, 2, 39, 65535, 2147483647})
        EXPECT_EQ(BinaryToDecimal(DecimalToBinary(number)), number);
}

TEST(BinaryDigits, ThatAreWrongOrTooManyRaise)
{
    EXPECT_EQ(Skip([] { BinaryToDecimal(u"10x"); }), 13);
    EXPECT_EQ(Skip([] { BinaryToDecimal(String(32, u'1')); }), 6);
}

}  // namespace tessarine
