#include "ui/main/ProcessingText.h"

#include "app/LanguageText.h"
#include "i18n/QtText.h"

namespace tessarine
{

String ProcessingText(const String& key)
{
    return GetLngString(u"frmProcessingDocuments", key);
}

String ProcessingText(const String& key, std::int32_t d, std::int32_t i, const String& s)
{
    QString text = ToQt(ProcessingText(key));
    text.replace(QLatin1String("%d"), QString::number(d));
    text.replace(QLatin1String("%i"), QString::number(i));
    text.replace(QLatin1String("%s"), ToQt(s));
    return FromQt(text);
}

}  // namespace tessarine
