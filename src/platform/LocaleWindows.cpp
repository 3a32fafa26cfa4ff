#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/Locale.h"
#include "platform/LocaleSigns.h"
#include "platform/NativePath.h"
#include "platform/SystemTimeFields.h"
#include "platform/WindowsHeaders.h"

namespace tessarine
{

namespace
{

bool usesSystemLocale = false;
bool tellsDottedI = false;

/// What the user has chosen, also where it differs from the usual of the country.
std::string ChosenByUser(LCTYPE what)
{
    std::array<wchar_t, 80> text{};
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, what, text.data(), static_cast<int>(text.size()));
    return ToUtf8(PathText(text.data()));
}

bool IsOfLanguage(std::wstring_view locale, std::wstring_view language)
{
    return locale.starts_with(language) && (locale.size() == language.size() || locale[language.size()] == L'-');
}

/// As the "C" locale has dates.
String PlainDateTime(const std::tm& local, bool isMidnight)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), isMidnight ? "%02d/%02d/%02d" : "%02d/%02d/%02d %02d:%02d:%02d",
                  local.tm_mon + 1, local.tm_mday, local.tm_year % 100, local.tm_hour, local.tm_min, local.tm_sec);
    return FromUtf8(text.data());
}

}  // namespace

bool TellsDottedI()
{
    return tellsDottedI;
}

void UseSystemLocale()
{
    usesSystemLocale = true;
    std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> name{};
    GetUserDefaultLocaleName(name.data(), static_cast<int>(name.size()));
    tellsDottedI = IsOfLanguage(name.data(), L"tr") || IsOfLanguage(name.data(), L"az");
}

std::string DecimalSign()
{
    return usesSystemLocale ? ChosenByUser(LOCALE_SDECIMAL) : ".";
}

std::string GroupingSign()
{
    return usesSystemLocale ? ChosenByUser(LOCALE_STHOUSAND) : "";
}

String DisplayDateTime(const std::tm& local)
{
    // A date without a time of day is kept as midnight, so midnight is shown as the date alone.
    const bool isMidnight = local.tm_hour == 0 && local.tm_min == 0 && local.tm_sec == 0;
    const SYSTEMTIME time = SystemTimeOf(local);
    std::array<wchar_t, 128> date{};
    std::array<wchar_t, 128> clock{};
    if (!usesSystemLocale ||
        !GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date.data(),
                         static_cast<int>(date.size()), nullptr) ||
        !GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, nullptr, clock.data(), static_cast<int>(clock.size())))
        return PlainDateTime(local, isMidnight);
    const String text = PathText(date.data());
    return isMidnight ? text : text + u' ' + PathText(clock.data());
}

}  // namespace tessarine
