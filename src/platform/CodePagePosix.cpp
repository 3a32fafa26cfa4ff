#include "platform/CodePage.h"

#include <langinfo.h>
#include <locale.h>

namespace tessarine
{

std::string SystemCodePage()
{
    const char* const usual = "windows-1252";
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t{});
    if (!locale)
        return usual;
    const std::string name = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    // The second name stands for ASCII. A system that is set to one of these says nothing of texts from elsewhere.
    return name == "UTF-8" || name == "ANSI_X3.4-1968" ? usual : name;
}

}  // namespace tessarine
