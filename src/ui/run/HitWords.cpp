#include "ui/run/HitWords.h"

#include "i18n/QtText.h"

namespace tessarine
{

namespace
{

/// The first characters of a name, on one line.
QString Short(const String& name)
{
    constexpr qsizetype longest = 60;
    QString text = ToQt(OneLineText(name));
    if (text.size() <= longest)
        return text;
    const bool dividesPair = text[longest - 1].isHighSurrogate();
    return text.left(dividesPair ? longest - 1 : longest) + u'…';
}

QString Named(const RunTexts& texts, const QString& what, const String& name)
{
    return name.empty() ? what : texts.Filled(u"Hits.Named", {.i = what, .s = Short(name)});
}

/// "Slide 3" or the like; the words without a number where there is none.
QString Numbered(const RunTexts& texts, StringView key, std::int32_t number)
{
    if (number > 0)
        return texts.Filled(key, {.d = number});
    QString words = texts(key);
    return words.remove("%d").simplified();
}

QString OuterPlace(const RunTexts& texts, const HitPlace& place)
{
    switch (place.location) {
        case Location::BuiltinProperies:
            return Named(texts, texts(u"Hits.BuiltInProperty"), place.property);
        case Location::CustomProperties:
            return Named(texts, texts(u"Hits.CustomProperty"), place.property);
        case Location::SlideMasterPerSlide:
        case Location::SlideMasterPerPresentation:
            return Named(texts, texts(u"Hits.SlideMaster"), place.design);
        case Location::TitleMaster:
            return Named(texts, texts(u"Hits.TitleMaster"), place.design);
        case Location::HandoutMaster:
            return texts(u"Hits.HandoutMaster");
        case Location::NotesMaster:
            return texts(u"Hits.NotesMaster");
        case Location::Notes:
            return Named(texts, Numbered(texts, u"Hits.Notes", place.slide), place.slideTitle);
        default:
            return Named(texts, Numbered(texts, u"Hits.Slide", place.slide), place.slideTitle);
    }
}

}  // namespace

QString PlaceWords(const RunTexts& texts, const Hit& hit)
{
    const HitPlace& place = *hit.place;
    QString words = OuterPlace(texts, place);
    const auto add = [&](const QString& part) { words = texts.Filled(u"Hits.Joined", {.i = words, .s = part}); };
    if (place.headerFooter == HitPlace::HeaderFooter::Header)
        add(texts(u"Hits.Header"));
    if (place.headerFooter == HitPlace::HeaderFooter::Footer)
        add(texts(u"Hits.Footer"));
    if (place.hyperlink > 0)
        add(texts.Filled(u"Hits.Hyperlink", {.d = place.hyperlink}));
    // A shape goes by its name, as in PowerPoint's list of a page's shapes; by its number where it has none.
    if (!place.shapeName.empty())
        add(Named(texts, texts(u"Hits.Shape"), place.shapeName));
    else if (place.shape > 0)
        add(texts.Filled(u"Hits.NumberedShape", {.d = place.shape}));
    // The text is that of the link, not of the shape.
    if (place.location == Location::Links)
        add(texts(u"Hits.LinkSource"));
    if (hit.paragraph > 0)
        add(texts.Filled(u"Hits.Paragraph", {.d = hit.paragraph}));
    return words;
}

QString RemarkWords(const RunTexts& texts, const Hit& hit, bool replaces)
{
    const QString notCounted = hit.isCounted ? QString() : texts(u"Hits.NotCounted");
    if (!replaces || hit.becomes)
        return notCounted;
    const QString& notChanged = texts(u"Hits.NotChanged");
    return notCounted.isEmpty() ? notChanged : texts.Filled(u"Hits.Joined", {.i = notCounted, .s = notChanged});
}

}  // namespace tessarine
