#include "office/windows/DocumentValues.h"

#include <gmock/gmock.h>

#include "platform/Failure.h"

namespace tessarine::windows
{
namespace
{

using powerpoint::Value;

std::string DateTextOf(const Value& value)
{
    const std::tm& t = std::get<powerpoint::Date>(value).local;
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.tm_year + 1900, t.tm_mon + 1, t.tm_mday,
                  t.tm_hour, t.tm_min, t.tm_sec);
    return text;
}

Value DateOf(int year, int month, int day, int hour, int minute, int second)
{
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    return powerpoint::Date{local};
}

/// A value as a server may hand it over, by the system's own conversion.
Variant Converted(const Variant& from, VARTYPE type)
{
    Variant to;
    EXPECT_EQ(VariantChangeType(to.Receive(), const_cast<VARIANT*>(&from.Raw()), 0, type), S_OK);
    return to;
}

TEST(DocumentValues, ValuesComeAsTheirKind)
{
    EXPECT_TRUE(std::holds_alternative<std::monostate>(ValueOf(Variant())));
    EXPECT_EQ(std::get<bool>(ValueOf(Variant(true))), true);
    EXPECT_EQ(std::get<std::int64_t>(ValueOf(Variant(std::int16_t{-7}))), -7);
    EXPECT_EQ(std::get<std::int64_t>(ValueOf(Variant(std::int64_t{9007199254740993}))), 9007199254740993);
    EXPECT_EQ(std::get<double>(ValueOf(Variant(1.5))), 1.5);
    EXPECT_EQ(std::get<double>(ValueOf(Converted(Variant(1.25), VT_CY))), 1.25);
    EXPECT_EQ(std::get<double>(ValueOf(Converted(Variant(1.25), VT_DECIMAL))), 1.25);
    EXPECT_EQ(std::get<std::int64_t>(ValueOf(Converted(Variant(200), VT_UI1))), 200);
    EXPECT_EQ(std::get<String>(ValueOf(Variant(String(u"a\0b\xD83D", 4)))), String(u"a\0b\xD83D", 4));
}

TEST(DocumentValues, WholeNumbersGoInThirtyTwoBitsWhereTheyFit)
{
    EXPECT_EQ(VariantOf(std::int64_t{-2147483648}).Type(), VT_I4);
    EXPECT_EQ(VariantOf(std::int64_t{2147483647}).Type(), VT_I4);
    EXPECT_EQ(VariantOf(std::int64_t{2147483648}).Type(), VT_I8);
    EXPECT_EQ(VariantOf(4.0).Type(), VT_R8);
    EXPECT_EQ(VariantOf(false).Type(), VT_BOOL);
    EXPECT_EQ(VariantOf(String()).Type(), VT_BSTR);
    EXPECT_EQ(VariantOf(std::monostate()).Type(), VT_EMPTY);
}

// Days since 1899-12-30, as the system counts them.
TEST(DocumentValues, DatesAreDaysWithTheTimeAsTheirFraction)
{
    EXPECT_EQ(DateTextOf(ValueOf(Variant::Date(45000.25))), "2023-03-15 06:00:00");
    EXPECT_EQ(DateTextOf(ValueOf(Variant::Date(0))), "1899-12-30 00:00:00");
    EXPECT_EQ(DateTextOf(ValueOf(Variant::Date(-1.25))), "1899-12-29 06:00:00") << "the time counts forward";
    EXPECT_EQ(VariantOf(DateOf(2023, 3, 15, 6, 0, 0)).Raw().date, 45000.25);
}

TEST(DocumentValues, EverySecondOfADayComesBackAsItself)
{
    for (const int year : {1601, 1899, 2024}) {
        for (int second = 0; second < 86400; second += 7) {
            const Value date = DateOf(year, 2, 28, second / 3600, second / 60 % 60, second % 60);
            ASSERT_EQ(DateTextOf(ValueOf(VariantOf(date))), DateTextOf(date));
        }
    }
}

TEST(DocumentValues, ATimeShortOfTheNextDayIsTheNextDay)
{
    EXPECT_EQ(DateTextOf(ValueOf(Variant::Date(45000.9999999))), "2023-03-16 00:00:00");
}

TEST(DocumentValues, ADateOutOfRangeIsATypeMismatch)
{
    EXPECT_THROW(ValueOf(Variant::Date(1e9)), Failure);
    EXPECT_THROW(VariantOf(DateOf(99, 1, 1, 0, 0, 0)), Failure);
}

TEST(Variant, ConvertsAsTheSystemDoes)
{
    EXPECT_EQ(Variant(String(u"12")).ToInteger(), 12);
    EXPECT_EQ(Variant(true).ToInteger(), -1);
    EXPECT_EQ(Variant(std::int32_t{7}).ToText(), u"7");
    EXPECT_EQ(Variant().ToText(), u"");
    EXPECT_EQ(Variant().ToInteger(), 0);
}

TEST(Variant, RaisesVisualBasicsNumbersForWhatDoesNotConvert)
{
    const auto numberOf = [](auto body) {
        try {
            body();
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    };

    EXPECT_EQ(numberOf([] { Variant(String(u"cat")).ToInteger(); }), FailureNumber::TypeMismatch);
    EXPECT_EQ(numberOf([] { Variant(1e10).ToInteger(); }), FailureNumber::Overflow);
    EXPECT_EQ(numberOf([] { Variant(1.0).ToObject(); }), FailureNumber::TypeMismatch);
}

}  // namespace
}  // namespace tessarine::windows
