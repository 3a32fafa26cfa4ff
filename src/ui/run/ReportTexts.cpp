#include "ui/run/ReportTexts.h"

#include <memory>

#include "app/LanguageText.h"
#include "i18n/QtText.h"
#include "ui/run/HitWords.h"

namespace tessarine
{

namespace
{

struct ReportText {
    const char16_t* key;
    String ReportWords::*word;
};

constexpr ReportText reportTexts[] = {
    {u"language", &ReportWords::language},
    {u"findTitle", &ReportWords::findTitle},
    {u"replaceTitle", &ReportWords::replaceTitle},
    {u"dryRunTitle", &ReportWords::dryRunTitle},
    {u"dryRun", &ReportWords::dryRun},
    {u"cancelled", &ReportWords::cancelled},
    {u"brokenOff", &ReportWords::brokenOff},
    {u"pageIsFull", &ReportWords::pageIsFull},
    {u"started", &ReportWords::started},
    {u"duration", &ReportWords::duration},
    {u"project", &ReportWords::project},
    {u"engine", &ReportWords::engine},
    {u"builtIn", &ReportWords::builtIn},
    {u"occurrences", &ReportWords::occurrences},
    {u"found", &ReportWords::found},
    {u"nothingFound", &ReportWords::nothingFound},
    {u"changed", &ReportWords::changed},
    {u"wouldChange", &ReportWords::wouldChange},
    {u"countedOnly", &ReportWords::countedOnly},
    {u"unchanged", &ReportWords::unchanged},
    {u"failed", &ReportWords::failed},
    {u"notProcessed", &ReportWords::notProcessed},
    {u"failures", &ReportWords::failures},
    {u"pairs", &ReportWords::pairs},
    {u"files", &ReportWords::files},
    {u"file", &ReportWords::file},
    {u"state", &ReportWords::state},
    {u"reason", &ReportWords::reason},
    {u"number", &ReportWords::number},
    {u"find", &ReportWords::find},
    {u"replaceWith", &ReportWords::replaceWith},
    {u"places", &ReportWords::places},
    {u"place", &ReportWords::place},
    {u"slide", &ReportWords::slide},
    {u"slideTitle", &ReportWords::slideTitle},
    {u"design", &ReportWords::design},
    {u"property", &ReportWords::property},
    {u"hyperlink", &ReportWords::hyperlink},
    {u"shape", &ReportWords::shape},
    {u"shapeName", &ReportWords::shapeName},
    {u"paragraph", &ReportWords::paragraph},
    {u"position", &ReportWords::position},
    {u"length", &ReportWords::length},
    {u"before", &ReportWords::before},
    {u"hit", &ReportWords::hit},
    {u"after", &ReportWords::after},
    {u"becomes", &ReportWords::becomes},
    {u"note", &ReportWords::note},
    {u"nowhere", &ReportWords::nowhere},
    {u"notCounted", &ReportWords::notCounted},
    {u"notChanged", &ReportWords::notChanged},
    {u"header", &ReportWords::header},
    {u"footer", &ReportWords::footer},
    {u"furtherHits", &ReportWords::furtherHits},
    {u"otherPairs", &ReportWords::otherPairs},
    {u"warning", &ReportWords::warning},
    {u"filter", &ReportWords::filter},
    {u"filterTip", &ReportWords::filterTip},
    {u"onlyWithHits", &ReportWords::onlyWithHits},
    {u"expand", &ReportWords::expand},
    {u"collapse", &ReportWords::collapse},
    {u"shown", &ReportWords::shown},
};

/// As the results show it: all in front of the bracket with the count.
String NameInResults(Location location)
{
    const StringView text = RowOf(location).inResults;
    return Trim(text.substr(0, text.rfind(u'(')));
}

}  // namespace

ReportWords WordsOfReport()
{
    ReportWords words;
    for (const ReportText& row : reportTexts)
        if (String text = GetLngString(u"Report", row.key); !text.empty())
            words.*row.word = std::move(text);
    words.nameOf = NameInResults;
    words.placeOf = [texts = std::make_shared<RunTexts>()](const Hit& hit) { return FromQt(PlaceWords(*texts, hit)); };
    return words;
}

}  // namespace tessarine
