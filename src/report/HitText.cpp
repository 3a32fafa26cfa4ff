#include "report/HitText.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/Utf16.h"
#include "platform/VisibleText.h"

namespace tessarine
{

namespace
{

constexpr StringView ellipsis = u"...";

String Numbered(StringView noun, std::int32_t number)
{
    String text(noun);
    if (number > 0)
        text += u' ' + FromUtf8(std::to_string(number));
    return text;
}

/// The first 40 characters of a name.
String Shortened(StringView name)
{
    constexpr int longest = 40;
    std::size_t end = 0;
    for (int characters = 0; characters < longest && end < name.size(); ++characters)
        end += IsPairAt(name, end) ? 2 : 1;
    return String(name.substr(0, end)) + String(end < name.size() ? ellipsis : StringView());
}

/// The noun with the name in quotes after it, where there is one.
String Named(String noun, StringView name)
{
    if (!name.empty())
        noun += u" \"" + OneLineText(Shortened(name)) + u'"';
    return noun;
}

/// The page or the property that a hit stands in.
String OuterPlace(const HitPlace& place)
{
    switch (place.location) {
        case Location::BuiltinProperies:
            return Named(u"property", place.property);
        case Location::CustomProperties:
            return Named(u"custom property", place.property);
        case Location::SlideMasterPerSlide:
        case Location::SlideMasterPerPresentation:
            return Named(u"slide master", place.design);
        case Location::TitleMaster:
            return Named(u"title master", place.design);
        case Location::HandoutMaster:
            // Header and footer of this location are those of the notes master.
            return place.headerFooter == HitPlace::HeaderFooter::None ? u"handout master" : u"notes master";
        case Location::NotesMaster:
            return u"notes master";
        case Location::Notes:
            return u"notes of " + Named(Numbered(u"slide", place.slide), place.slideTitle);
        default:
            return Named(Numbered(u"slide", place.slide), place.slideTitle);
    }
}

/// Whether this unit ends a line or moves to a tab stop.
bool IsBreakOrTab(char16_t unit)
{
    // Tab, line feed, vertical tab (a line break inside a paragraph), form feed and carriage return; then NEL and the
    // separators of lines and paragraphs.
    return (unit >= 0x09 && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

}  // namespace

String PlaceText(const Hit& hit)
{
    return TextPlaceText(*hit.place) + ParagraphText(hit);
}

String ParagraphText(const Hit& hit)
{
    return hit.paragraph > 0 ? u", " + Numbered(u"paragraph", hit.paragraph) : String();
}

String TextPlaceText(const HitPlace& place)
{
    String text = OuterPlace(place);
    if (place.headerFooter != HitPlace::HeaderFooter::None)
        text += place.headerFooter == HitPlace::HeaderFooter::Header ? u", header" : u", footer";
    if (place.hyperlink > 0)
        text += u", " + Numbered(u"hyperlink", place.hyperlink);
    if (place.shape > 0 || !place.shapeName.empty())
        text += u", " + Named(Numbered(u"shape", place.shape), place.shapeName);
    // The text is not the shape's own.
    if (place.location == Location::Links)
        text += u", source";
    return text;
}

String RemarkText(const Hit& hit, bool replaces)
{
    String text = hit.isCounted ? u"" : u"not counted";
    if (replaces && !hit.becomes)
        text += text.empty() ? u"stays as it is" : u", stays as it is";
    return text;
}

HitLine LineOf(const Hit& hit, StringView find)
{
    HitLine line;
    line.before = String(hit.isCutBefore ? ellipsis : StringView()) + OneLineText(hit.before);
    line.found = OneLineText(hit.text.empty() ? find : StringView(hit.text));
    if (hit.becomes)
        line.becomes = OneLineText(*hit.becomes);
    line.after = OneLineText(hit.after) + String(hit.isCutAfter ? ellipsis : StringView());
    return line;
}

String OneLineText(StringView text)
{
    // Most texts have nothing to change, and each hit has three.
    if (std::ranges::all_of(text, [](char16_t unit) { return unit >= u' ' && unit < 0x7F; }))
        return String(text);
    String line;
    line.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        // CR LF is one line end.
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n')
            continue;
        line += IsBreakOrTab(text[at]) ? u' ' : text[at];
    }
    return VisibleText(line);
}

}  // namespace tessarine
