#include "platform/SystemTimeFields.h"

namespace tessarine
{

SYSTEMTIME SystemTimeOf(const std::tm& calendar)
{
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(calendar.tm_year + 1900);
    time.wMonth = static_cast<WORD>(calendar.tm_mon + 1);
    time.wDay = static_cast<WORD>(calendar.tm_mday);
    time.wHour = static_cast<WORD>(calendar.tm_hour);
    time.wMinute = static_cast<WORD>(calendar.tm_min);
    time.wSecond = static_cast<WORD>(calendar.tm_sec);
    return time;
}

std::tm CalendarOf(const SYSTEMTIME& time)
{
    std::tm calendar{};
    calendar.tm_year = time.wYear - 1900;
    calendar.tm_mon = time.wMonth - 1;
    calendar.tm_mday = time.wDay;
    calendar.tm_hour = time.wHour;
    calendar.tm_min = time.wMinute;
    calendar.tm_sec = time.wSecond;
    calendar.tm_isdst = -1;
    return calendar;
}

}  // namespace tessarine
