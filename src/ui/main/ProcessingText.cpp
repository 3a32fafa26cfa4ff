#include "ui/main/ProcessingText.h"

#include "app/LanguageText.h"
#include "i18n/QtText.h"

namespace tessarine
{

String ProcessingText(const String& key)
{
    return GetLngString(u"frmProcessingDocuments", key);
}

String ProcessingText(const String& key, std::optional<std::int32_t> d, std::optional<std::int32_t> i,
                      const std::optional<String>& s)
{
    QString text = ToQt(ProcessingText(key));
    if (d)
        text.replace(QLatin1String("%d"), QString::number(*d));
    if (i)
        text.replace(QLatin1String("%i"), QString::number(*i));
    // Last: a path may hold a "%d" or "%i" of its own.
    if (s)
        text.replace(QLatin1String("%s"), ToQt(*s));
    return FromQt(text);
}

}  // namespace tessarine
