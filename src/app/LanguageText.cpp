#include "app/LanguageText.h"

#include <string>

#include "app/GlobalState.h"
#include "files/ProfileText.h"
#include "log/Treatments.h"
#include "platform/PathSeparator.h"
#include "platform/ProgramFolder.h"
#include "platform/Utf16.h"

namespace tessarine
{

namespace
{

constexpr std::size_t longestText = 4095;

/// The text without its last characters, as many as there are spaces in front. Empty for a text of spaces alone.
String ShortenedByLeadingSpaces(String text)
{
    std::size_t spaces = text.find_first_not_of(u' ');
    if (spaces == String::npos)
        return {};
    for (; spaces > 0; --spaces) {
        const std::size_t last = text.size() - 1;
        text.resize(DividesPair(text, last) ? last - 1 : last);
    }
    return text;
}

}  // namespace

String LanguageFolder()
{
    return DataFolder() + PathSeparator + u"Languages";
}

String GetLngString(const String& section, const String& key)
{
    return LogAndReturn({u"GetLngString", u"Module modLanguage"}, [&] {
        const String path = LanguageFolder() + PathSeparator + CurrentLanguageFile;
        // Losing the end to leading spaces looks like a slip. Intended: the lookup has always counted the trimmed text
        // and cut the untrimmed one, and a language file is to give the texts that it always gave.
        return ShortenedByLeadingSpaces(ReadProfileValue(path, section, key, longestText));
    });
}

String GetLngString(const String& section, const String& key, std::int32_t number)
{
    constexpr StringView placeholder = u"%d";
    const String digits = FromUtf8(std::to_string(number));
    String text = GetLngString(section, key);
    for (std::size_t at = text.find(placeholder); at != String::npos; at = text.find(placeholder, at + digits.size()))
        text.replace(at, placeholder.size(), digits);
    return text;
}

}  // namespace tessarine
