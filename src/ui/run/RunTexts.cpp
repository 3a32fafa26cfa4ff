#include "ui/run/RunTexts.h"

#include "app/LanguageText.h"
#include "i18n/QtText.h"

namespace tessarine
{

const QString& RunTexts::operator()(StringView key) const
{
    const auto [entry, isNew] = texts_.try_emplace(String(key));
    if (isNew)
        entry->second = ToQt(GetLngString(u"frmProcessingDocuments", entry->first));
    return entry->second;
}

QString RunTexts::Filled(StringView key, const Values& values) const
{
    return FilledText((*this)(key), values);
}

}  // namespace tessarine
