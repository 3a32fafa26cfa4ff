#include <langinfo.h>
#include <locale.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/Locale.h"
#include "platform/LocaleSigns.h"

namespace tessarine
{

namespace
{

using OwnedLocale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

/// The locale for everything that looks local. The process's global one stays "C", so that libraries which format
/// numbers by themselves don't change with the user's language.
OwnedLocale& SystemLocale()
{
    static OwnedLocale locale(newlocale(LC_ALL_MASK, "C", locale_t{}), &freelocale);
    return locale;
}

std::string TimeText(const char* format, const std::tm& time)
{
    // strftime gives 0 for a text longer than the buffer, and the result is then empty.
    char buffer[256];
    return {buffer, strftime_l(buffer, sizeof buffer, format, &time, SystemLocale().get())};
}

bool tellsDottedI = false;

/// The name of the locale for characters, by the order in which the system looks for it (POSIX, 8.2).
std::string_view CharacterLocale()
{
    for (const char* const variable : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* const name = std::getenv(variable); name != nullptr && *name != '\0')
            return name;
    return {};
}

bool IsOfLanguage(std::string_view locale, std::string_view language)
{
    return locale.starts_with(language) &&
           (locale.size() == language.size() || std::string_view("_.@").find(locale[language.size()]) != locale.npos);
}

}  // namespace

bool TellsDottedI()
{
    return tellsDottedI;
}

void UseSystemLocale()
{
    tellsDottedI = IsOfLanguage(CharacterLocale(), "tr") || IsOfLanguage(CharacterLocale(), "az");
    // A name that the system does not know leaves the "C" locale in force.
    if (const locale_t locale = newlocale(LC_ALL_MASK, "", locale_t{}))
        SystemLocale().reset(locale);
}

std::string DecimalSign()
{
    return nl_langinfo_l(RADIXCHAR, SystemLocale().get());
}

std::string GroupingSign()
{
    return nl_langinfo_l(THOUSEP, SystemLocale().get());
}

String DisplayDateTime(const std::tm& local)
{
    std::tm time = local;
    // Settles the day of the week, which some locales show. The local time zone plays no part in that.
    timegm(&time);
    // A date without a time of day is kept as midnight, so midnight is shown as the date alone.
    const bool isMidnight = time.tm_hour == 0 && time.tm_min == 0 && time.tm_sec == 0;
    return FromUtf8(TimeText(isMidnight ? "%x" : "%x %X", time));
}

}  // namespace tessarine
