#include "i18n/LanguageOfQt.h"

#include <algorithm>
#include <array>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

#include "app/GlobalState.h"

namespace tessarine
{

namespace
{

struct Language {
    StringView file;
    QLocale::Language language;
    QLocale::Territory territory = QLocale::AnyTerritory;
};

constexpr std::array<Language, 7> languages{{
    {u"Chinese(Big5).lng", QLocale::Chinese, QLocale::Taiwan},
    {u"English.lng", QLocale::English},
    {u"French.lng", QLocale::French},
    {u"German.lng", QLocale::German},
    {u"Polish.lng", QLocale::Polish},
    {u"Russian.lng", QLocale::Russian},
    {u"Spanish.lng", QLocale::Spanish},
}};

QLocale LocaleOf(StringView languageFile)
{
    const auto* const found = std::ranges::find(languages, languageFile, &Language::file);
    return found == languages.end() ? QLocale() : QLocale(found->language, found->territory);
}

}  // namespace

void UseLanguageOfQt()
{
    static QPointer<QTranslator> words;  // the application's, and goes with it
    static String languageFile;
    if (words && languageFile == CurrentLanguageFile)
        return;
    delete words;
    words = new QTranslator(QCoreApplication::instance());
    languageFile = CurrentLanguageFile;
    // Without a file for the language the words are English.
    if (words->load(LocaleOf(languageFile), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(words);
}

}  // namespace tessarine
