#include "app/LanguageText.h"

#include "app/GlobalState.h"
#include "platform/PathSeparator.h"
#include "platform/ProfileText.h"
#include "platform/ProgramFolder.h"
#include "platform/Treatments.h"

namespace tessarine
{

namespace
{

constexpr std::size_t longestText = 4095;

/// Drops as many characters at the end as spaces lead the text.
String ShortenedByLeadingSpaces(String text)
{
    std::size_t spaces = text.find_first_not_of(u' ');
    if (spaces == String::npos)
        return {};
    for (; spaces > 0; --spaces) {
        const bool isPair =
            text.size() >= 2 && (text.back() & 0xFC00) == 0xDC00 && (text[text.size() - 2] & 0xFC00) == 0xD800;
        text.resize(text.size() - (isPair ? 2 : 1));
    }
    return text;
}

}  // namespace

String LanguageFolder()
{
    return ProgramFolder() + PathSeparator + u"Languages";
}

String GetLngString(const String& section, const String& key)
{
    return LogAndReturn({u"GetLngString", u"Module modLanguage"}, [&] {
        const String path = LanguageFolder() + PathSeparator + CurrentLanguageFile;
        // The end that is lost to leading spaces looks like a slip; texts depend on it and it is intended.
        return ShortenedByLeadingSpaces(ReadProfileValue(path, section, key, longestText));
    });
}

}  // namespace tessarine
